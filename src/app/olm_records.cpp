#include "app/olm_records.h"

#include "app/shared_state.h"

#include <QHash>
#include <QPair>

namespace
{
QHash<qint64, std::vector<const MailMLRC *>> recordsByFolder;
QHash<QPair<qint64, quint64>, const MailMLRC *> recordByBody;
QHash<QString, OlmEntryPlace> placeOfEntry;
} // namespace

MailMLRC *appendOlmRecord(MailMLRC &&record)
{
    auto *node = new MailMLRC(std::move(record));
    node->pNext = nullptr;
    if (!TmpMlrcPtrStart) {
        TmpMlrcPtrStart = node;
        MailItemCount = 1;
    } else {
        TmpMlrcPtrEnd->pNext = node;
        ++MailItemCount;
    }
    TmpMlrcPtrEnd = node;
    recordsByFolder[node->llParentId].push_back(node);
    const QPair<qint64, quint64> body(node->llBodyOffset, static_cast<quint64>(node->llBodySize));
    if (!recordByBody.contains(body))
        recordByBody.insert(body, node);
    return node;
}

const std::vector<const MailMLRC *> &olmRecordsOfFolder(qint64 folderId)
{
    static const std::vector<const MailMLRC *> none;
    const auto found = recordsByFolder.constFind(folderId);
    return found == recordsByFolder.constEnd() ? none : *found;
}

const MailMLRC *olmRecordOfBody(qint64 bodyOffset, quint64 bodySize)
{
    return recordByBody.value({bodyOffset, bodySize}, nullptr);
}

void noteOlmEntry(const QString &name, const OlmEntryPlace &place)
{
    if (!placeOfEntry.contains(name))
        placeOfEntry.insert(name, place);
}

OlmEntryPlace olmEntryPlace(const QString &name)
{
    return placeOfEntry.value(name);
}

void freeOlmRecords()
{
    placeOfEntry.clear();
    recordsByFolder.clear();
    recordByBody.clear();
    while (TmpMlrcPtrStart) {
        MailMLRC *next = TmpMlrcPtrStart->pNext;
        delete TmpMlrcPtrStart;
        TmpMlrcPtrStart = next;
    }
    TmpMlrcPtrEnd = nullptr;
}
