#include "cli/scan_output.h"

#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "cli/json_writer.h"

#include <QTextStream>

namespace
{
void writeFolders(JsonWriter *json, const std::vector<SentFolder> &folders)
{
    json->key("folders").beginArray();
    for (const SentFolder &folder : folders) {
        json->beginObject();
        json->key("id").value(folder.id);
        json->key("parent").value(folder.parent);
        json->key("name").value(folder.name);
        json->key("display").value(displayName(folder.name));
        json->key("path").value(folder.path);
        json->endObject();
    }
    json->endArray();
}

void writeFiles(JsonWriter *json)
{
    json->key("files").beginArray();
    for (const MailItemNode *item = StartMailItem; item; item = item->next) {
        json->beginObject();
        json->key("path").value(pathOf(*item));
        json->key("folder").value(item->parentId);
        json->endObject();
    }
    json->endArray();
}

// The index of mbox files leaves one empty record behind for a message that never came.
bool isLeftOver(const MboxMessageNode &record)
{
    return !record.next && record.path[0] == 0;
}

void writeMessages(JsonWriter *json)
{
    json->key("messages").beginArray();
    for (const MboxMessageNode *record = TmpMboxMbxPtrStart; record && !isLeftOver(*record);
         record = record->next) {
        json->beginObject();
        json->key("path").value(fieldText(record->path));
        json->key("offset").value(record->offset);
        json->key("length").value(record->length);
        json->key("from").value(fieldText(record->from));
        json->key("subject").value(fieldText(record->subject));
        if (bMbsFileFound)
            json->key("label").value(fieldText(record->path + labelFieldStart));
        json->endObject();
    }
    json->endArray();
}

void writeScan(const Arguments &arguments, const ScanResult &scan)
{
    JsonWriter json(stdout);
    json.beginObject();
    json.key("client").value(static_cast<qint64>(arguments.kind->client));
    json.key("store").value(arguments.store);
    json.key("outcome").value(outcomeName(scan.outcome));
    writeFolders(&json, scan.folders);
    writeFiles(&json);
    writeMessages(&json);
    json.endObject();
}

// Messages directly in a folder, as far as the scan has counted them.
size_t messagesIn(const SentFolder &folder)
{
    return bMboxFileFound ? messagesOfPath(folder.path).size() : mailItemsOfFolder(folder.id).size();
}
} // namespace

void printScan(const Arguments &arguments, const ScanResult &scan)
{
    if (arguments.json) {
        writeScan(arguments, scan);
        return;
    }
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    for (const SentFolder &folder : scan.folders) {
        const int depth = folder.tree.count(QLatin1Char('/'));
        out << QString(2 * depth, QLatin1Char(' ')) << displayName(folder.name);
        if (const size_t messages = messagesIn(folder))
            out << " (" << messages << ')';
        out << '\n';
    }
}
