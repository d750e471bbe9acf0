#include "cli/scan_output.h"

#include "app/olm_records.h"
#include "app/passed_over.h"
#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "cli/json_writer.h"
#include "cli/passed_over_output.h"
#include "cli/say.h"

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
        json->key("path").value(item->path);
        json->key("folder").value(item->parentId);
        json->endObject();
    }
    json->endArray();
}

// The index of mbox files leaves one empty record behind for a message that never came.
bool isLeftOver(const MboxMessageNode &record)
{
    return !record.next && record.path.isEmpty();
}

void writeMessages(JsonWriter *json)
{
    json->key("messages").beginArray();
    for (const MboxMessageNode *record = TmpMboxMbxPtrStart; record && !isLeftOver(*record);
         record = record->next) {
        json->beginObject();
        json->key("path").value(record->path);
        json->key("offset").value(record->offset);
        json->key("length").value(record->length);
        json->key("from").value(record->from);
        json->key("subject").value(record->subject);
        if (bMbsFileFound)
            json->key("label").value(record->label);
        json->endObject();
    }
    json->endArray();
}

void writeList(JsonWriter *json, const char *key, const QByteArray &list)
{
    json->key(key);
    if (list.isNull())
        json->null();
    else
        json->value(QString::fromLatin1(list));
}

void writeRecord(JsonWriter *json, const MailMLRC &record)
{
    json->beginObject();
    json->key("szFromName").value(record.szFromName.text());
    json->key("szFromAddress").value(record.szFromAddress.text());
    json->key("szToAddress").value(record.szToAddress.text());
    json->key("szCcAddress").value(record.szCcAddress.text());
    json->key("szCcName").value(record.szCcName.text());
    json->key("szBccAddress").value(record.szBccAddress.text());
    json->key("szReceivedTime").value(record.szReceivedTime.text());
    json->key("szInReplyTo").value(record.szInReplyTo.text());
    json->key("szReferences").value(record.szReferences.text());
    json->key("szMessageId").value(record.szMessageId.text());
    json->key("szToName").value(record.szToName.text());
    json->key("szThreadTopic").value(record.szThreadTopic.text());
    json->key("szSubject").value(record.szSubject.text());
    json->key("szSentTime").value(record.szSentTime.text());
    writeList(json, "pAttachContentIds", record.pAttachContentIds);
    writeList(json, "pAttachContentTypes", record.pAttachContentTypes);
    writeList(json, "pAttachNames", record.pAttachNames);
    writeList(json, "pAttachUrls", record.pAttachUrls);
    writeList(json, "pAttachOffsets", record.pAttachOffsets);
    writeList(json, "pAttachSizes", record.pAttachSizes);
    json->key("llBodySize").value(record.llBodySize);
    json->key("llBodyOffset").value(record.llBodyOffset);
    json->key("szFolderPath").value(record.szFolderPath.text());
    json->key("llParentId").value(record.llParentId);
    json->key("iIsOutgoing").value(static_cast<qint64>(record.iIsOutgoing));
    json->key("szPriority").value(record.szPriority.text());
    json->endObject();
}

void writeRecords(JsonWriter *json)
{
    json->key("records").beginArray();
    for (const MailMLRC *record = TmpMlrcPtrStart; record; record = record->pNext)
        writeRecord(json, *record);
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
    if (bOlmFileFound)
        writeRecords(&json);
    writePassedOver(&json);
    json.endObject();
}

// Messages directly in a folder, as far as the scan has counted them.
size_t messagesIn(const SentFolder &folder)
{
    if (bOlmFileFound)
        return olmRecordsOfFolder(folder.id).size();
    return bMboxFileFound ? messagesOfPath(folder.path).size() : mailItemsOfFolder(folder.id).size();
}
// In text the first few stand for all: the JSON has each of them.
void sayPassedOver()
{
    constexpr int most = 5;
    const QStringList sentences = passedOver.sentences();
    for (const QString &sentence : sentences.mid(0, most))
        say(QStringLiteral("passed over: ") + sentence);
    if (passedOver.count() > most)
        say(QStringLiteral("passed over: %1 in all").arg(passedOver.count()));
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
        out << QString(2 * depth, QLatin1Char(' ')) << visible(displayName(folder.name));
        if (const size_t messages = messagesIn(folder))
            out << " (" << messages << ')';
        out << '\n';
    }
    out.flush();
    sayPassedOver();
}
