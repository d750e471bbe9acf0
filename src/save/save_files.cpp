#include "app/shared_state.h"
#include "platform/read_ahead.h"
#include "save/file_saving.h"
#include "save/mail_saving.h"
#include "save/ticked_items.h"

namespace
{
constexpr size_t startBytes = 64 * 1024; // most messages whole

std::optional<qint64> oneMessage(const QString &)
{
    return 1;
}

QStringList tickedPaths()
{
    QStringList paths;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (folder->state == stateTicked)
            for (const MailItemNode *item : mailItemsOfFolder(folder->folderId))
                paths.append(item->path);
    return paths;
}
} // namespace

void QMailSaving::FileSearch()
{
    saveFiles(appleMailSave);
}

void QMailSaving::FileSearchForEmlOutlook()
{
    saveFiles(mailMateOutlookSave);
}

void QMailSaving::FileSearchForEmlAppleMail()
{
    saveFiles(mailMateAppleSave);
}

void QMailSaving::FileSearchForEmlandfEmlOutlook()
{
    saveFiles(outspringOutlookSave);
}

void QMailSaving::FileSearchForEmlandfEmlAppleMail()
{
    saveFiles(outspringAppleSave);
}

void QMailSaving::FileSearchForMbsOutlook()
{
    saveFiles(operaOutlookSave);
}

void QMailSaving::FileSearchForMbsAppleMail()
{
    saveFiles(operaAppleSave);
}

void QMailSaving::saveFiles(const FileSaveRow &row)
{
    if (bStopFlag)
        return;
    ++fileNameCounter;
    noOfConvertedMessage = 0;
    emit OnShowProgressDlg();
    emit OnIndivisibleProgressvalue(0);
    FileSaving saving(row, m_mode);
    ulCount = countTickedItems();
    ReadAhead<ByteSource> files(tickedPaths(),
                                [](const QString &path) { return ByteSource::ofFile(path, startBytes); });
    quint64 done = 0;
    quint64 shown = 0;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next) {
        const size_t items = folder->state == stateTicked ? mailItemsOfFolder(folder->folderId).size() : 0;
        if (items > 0)
            saveLedger.enterFolder(folder->folderId);
        for (size_t i = items; i > 0; --i) {
            if (const quint64 percent = done * 100 / ulCount; percent != shown)
                emit OnIndivisibleProgressvalue(static_cast<double>(shown = percent));
            if (bStopFlag)
                break;
            ++done;
            if (!saving.save(files.next())) {
                saving.closeMailbox();
                leaveOutFiles(done, LeftOutReason::NotReached, oneMessage);
                return;
            }
        }
        saving.closeMailbox();
        // Every folder behind the last file says so again.
        if (done == ulCount)
            emitFinished();
    }
    if (done < ulCount)
        leaveOutFiles(done, LeftOutReason::Stopped, oneMessage);
    if (ulCount > 0)
        return;
    if (!row.endsSilently) {
        emit OnIndivisibleProgressvalue(100);
        emit OnSubProgressHide();
        emit ProgressDailogHide();
    }
    bStopFlag = true;
}
