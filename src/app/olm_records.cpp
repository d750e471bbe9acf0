#include "app/olm_records.h"

#include "app/shared_state.h"

#include <QHash>
#include <QPair>

namespace
{
QHash<qint64, std::vector<const MailMLRC *>> recordsByFolder;
QHash<QPair<qint64, quint64>, const MailMLRC *> recordByBody;
QHash<QByteArray, std::vector<OlmEntryPlace>> placesOfEntry; ///< by name, in the order of the archive

QByteArray keyOf(const QString &name)
{
    return name.normalized(QString::NormalizationForm_C).toUtf8();
}
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
    placesOfEntry[keyOf(name)].push_back(place);
}

OlmEntryPlace olmEntryPlace(const QString &name, qint64 position)
{
    const auto entry = placesOfEntry.constFind(keyOf(name));
    if (entry == placesOfEntry.constEnd())
        return {};
    const auto behind =
        std::lower_bound(entry->begin(), entry->end(), position,
                         [](const OlmEntryPlace &place, qint64 at) { return place.offset < at; });
    return behind == entry->begin() ? *behind : *(behind - 1);
}

void freeOlmRecords()
{
    placesOfEntry.clear();
    recordsByFolder.clear();
    recordByBody.clear();
    while (TmpMlrcPtrStart) {
        MailMLRC *next = TmpMlrcPtrStart->pNext;
        delete TmpMlrcPtrStart;
        TmpMlrcPtrStart = next;
    }
    TmpMlrcPtrEnd = nullptr;
}
