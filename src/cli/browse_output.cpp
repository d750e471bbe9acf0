#include "cli/browse_output.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "browse/olm_preview.h"
#include "cli/json_writer.h"
#include "cli/say.h"

#include <QTextStream>

namespace
{
std::vector<MessageRow> rowsOfFiles(const QString &folderPath)
{
    std::vector<MessageRow> rows;
    if (folderPath.isEmpty())
        return rows;
    for (const QString &file : filesBelow(folderPath)) {
        if (stopSignalled())
            break;
        if (!isListed(file, folderPath))
            continue;
        bool opened = false;
        if (std::optional<MessageRow> row = rowOfMessageFile(file, &opened))
            rows.push_back(std::move(*row));
        if (!opened)
            reportUnread(QStringLiteral("not listed, it can't be opened: ") + file);
    }
    return rows;
}

PreviewText previewOfRow(const MessageRow &row)
{
    if (bOlmFileFound)
        return previewOfOlmMessage(row.offset, row.length).value_or(PreviewText());
    if (bMboxFileFound)
        return previewOfMailboxMessage(row.path, row.offset, row.length);
    return previewOfFile(row.path);
}

void writeRow(JsonWriter *json, const MessageRow &row)
{
    json->beginObject();
    json->key("text").value(row.text);
    json->key("path").value(row.path);
    json->key("offset").value(row.offset);
    json->key("length").value(row.length);
    json->endObject();
}

void writeList(JsonWriter *json, const SentFolder &folder, const std::vector<MessageRow> &rows)
{
    json->beginObject();
    json->key("id").value(folder.id);
    json->key("tree").value(folder.tree);
    json->key("count").value(static_cast<qint64>(rows.size()));
    json->key("rows").beginArray();
    for (const MessageRow &row : rows)
        writeRow(json, row);
    json->endArray();
    json->endObject();
}

void writePreview(JsonWriter *json, qint64 folder, qint64 row, const PreviewText &preview)
{
    json->beginObject();
    json->key("folder").value(folder);
    json->key("row").value(row);
    json->key("header").beginArray();
    for (const HeaderLine &line : preview.header)
        json->value(line.text);
    json->endArray();
    json->key("html");
    if (preview.html)
        json->value(*preview.html);
    else
        json->null();
    json->endObject();
}

void showPreview(QTextStream *out, const PreviewText &preview)
{
    for (const HeaderLine &line : preview.header)
        *out << visible(line.text.trimmed(), true) << '\n';
    *out << '\n' << visible(preview.html.value_or(QString()), true) << "\n\n";
}
} // namespace

std::vector<MessageRow> rowsOfFolder(const SentFolder &folder)
{
    if (bMboxFileFound)
        return mailboxRows(folder.path);
    if (bOlmFileFound)
        return olmRows(folder.id);
    if (bMbsFileFound)
        return operaRows(folder.path, displayName(folder.name));
    return rowsOfFiles(folder.path);
}

void printLists(const Arguments &arguments, const std::vector<SentFolder> &folders)
{
    if (arguments.json) {
        JsonWriter json(stdout);
        json.beginObject();
        json.key("folders").beginArray();
        for (const SentFolder &folder : folders) {
            if (stopSignalled())
                break;
            writeList(&json, folder, rowsOfFolder(folder));
        }
        json.endArray();
        json.endObject();
        return;
    }
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    for (const SentFolder &folder : folders) {
        if (stopSignalled())
            break;
        const std::vector<MessageRow> rows = rowsOfFolder(folder);
        out << visible(folder.tree) << " (" << rows.size() << ")\n";
        for (const MessageRow &row : rows)
            out << "    " << visible(QString(row.text).replace(QLatin1Char('\n'), QStringLiteral("  |  ")))
                << '\n';
    }
}

void printPreviews(const Arguments &arguments, const std::vector<SentFolder> &folders)
{
    std::optional<JsonWriter> json;
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    if (arguments.json) {
        json.emplace(stdout);
        json->beginObject();
        json->key("messages").beginArray();
    }
    for (const SentFolder &folder : folders) {
        qint64 index = 0;
        for (const MessageRow &row : rowsOfFolder(folder)) {
            if (stopSignalled())
                break;
            const PreviewText preview = previewOfRow(row);
            if (json)
                writePreview(&*json, folder.id, index++, preview);
            else
                showPreview(&out, preview);
        }
    }
    if (json) {
        json->endArray();
        json->endObject();
    }
}
