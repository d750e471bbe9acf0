#include "cli/report_output.h"

#include "cli/json_writer.h"
#include "cli/passed_over_output.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <memory>

namespace
{
void writeCounts(JsonWriter *json, const FolderCount &counts)
{
    json->key("found").value(counts.found);
    json->key("written").value(counts.written);
    json->key("joined").value(counts.joined);
    json->key("leftOut").value(counts.leftOut);
}

template <typename Values>
void writeArray(JsonWriter *json, const char *key, const Values &values)
{
    json->key(key).beginArray();
    for (const auto &value : values)
        json->value(value);
    json->endArray();
}

void writeFolders(JsonWriter *json, const SaveLedger &ledger)
{
    json->key("folders").beginArray();
    for (const FolderCount &folder : ledger.folders()) {
        json->beginObject();
        json->key("id").value(folder.id);
        json->key("tree").value(folder.tree);
        writeCounts(json, folder);
        writeArray(json, "mailboxes", folder.mailboxes);
        json->endObject();
    }
    json->endArray();
}

void writeLeftOut(JsonWriter *json, const LeftOutItem &item)
{
    json->beginObject();
    json->key("path").value(item.path);
    json->key("offset").value(item.offset);
    json->key("messages");
    if (item.messages)
        json->value(*item.messages);
    else
        json->null();
    json->key("reason").value(QString::fromLatin1(nameOf(item.reason)));
    json->key("text").value(item.text);
    json->endObject();
}

void writeRest(JsonWriter *json, const char *reason, std::optional<qint64> messages)
{
    json->beginObject();
    json->key("path").null();
    json->key("reason").value(QString::fromLatin1(reason));
    json->key("messages");
    if (messages)
        json->value(*messages);
    else
        json->null();
    json->endObject();
}

void writeLeftOutItems(JsonWriter *json, const SaveLedger &ledger)
{
    json->key("leftOutItems").beginArray();
    for (const LeftOutItem &item : ledger.leftOutItems())
        writeLeftOut(json, item);
    if (const std::optional<LeftOutItem> rest = ledger.itemsNotKept())
        writeRest(json, nameOf(rest->reason), rest->messages);
    json->endArray();
}

void writeChanges(JsonWriter *json, const SaveLedger &ledger)
{
    json->key("changed").beginArray();
    for (int i = 0; i < changeKinds; ++i) {
        const auto kind = static_cast<ChangeKind>(i);
        const ChangeCount &change = ledger.change(kind);
        if (change.messages == 0)
            continue;
        json->beginObject();
        json->key("kind").value(QString::fromLatin1(nameOf(kind)));
        json->key("messages").value(change.messages);
        json->key("count").value(change.count);
        json->key("example").beginObject();
        json->key("path").value(change.path);
        json->key("offset").value(change.offset);
        json->endObject();
        json->endObject();
    }
    json->endArray();
}

void writeSharedMailboxes(JsonWriter *json, const SaveLedger &ledger)
{
    json->key("sharedMailboxes").beginArray();
    for (const TargetCount &target : ledger.targets()) {
        if (target.folders.size() < 2)
            continue;
        json->beginObject();
        json->key("mailbox").value(target.mailbox);
        writeArray(json, "folders", target.folders);
        json->endObject();
    }
    json->endArray();
}

void writeCheck(JsonWriter *json, const std::optional<BundleCheck> &check)
{
    json->key("checked");
    if (!check) {
        json->null();
        return;
    }
    json->beginObject();
    json->key("mailboxes").value(check->mailboxes);
    json->key("separators").value(check->separators);
    json->key("bytes").value(check->bytes);
    writeArray(json, "differences", check->differences);
    json->endObject();
}

// Why the stream could not be written, "" where it could; closes it.
QString close(std::FILE *file)
{
    const bool failed = std::ferror(file) != 0;
    const int number = errno;
    if (std::fclose(file) != 0)
        return qt_error_string(errno);
    return failed ? qt_error_string(number) : QString();
}
} // namespace

void writeReport(JsonWriter *json, const SaveReport &report, const SaveLedger &ledger)
{
    json->beginObject();
    writeCounts(json, ledger.total());
    json->key("strays").value(ledger.strays());
    writeFolders(json, ledger);
    writeLeftOutItems(json, ledger);
    writeChanges(json, ledger);
    writeSharedMailboxes(json, ledger);
    writePassedOver(json);
    json->key("bytes").value(ledger.bytes());
    json->key("free").value(report.freeBytes);
    writeCheck(json, report.check);
    json->endObject();
}

QString writeReportFile(const QString &path, const SaveReport &report, const SaveLedger &ledger)
{
    std::FILE *file = std::fopen(QFile::encodeName(path).constData(), "we");
    if (!file)
        return qt_error_string(errno);
    if (path.endsWith(QLatin1String(".json"))) {
        JsonWriter json(file);
        writeReport(&json, report, ledger);
    } else {
        const QByteArray text = wholeReportText(report, ledger).toUtf8();
        std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), file);
    }
    return close(file);
}
