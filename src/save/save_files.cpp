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
} // namespace

void QMailSaving::saveFiles()
{
    if (bStopFlag)
        return;
    ++fileNameCounter;
    noOfConvertedMessage = 0;
    emit OnShowProgressDlg();
    m_shownPercent = -1;
    showPercent(0);
    FileSaving saving(*m_writer, m_mode);
    ulCount = countTickedItems();
    m_done = 0;
    ReadAhead<ByteSource> files(tickedPaths(),
                                [](const QString &path) { return ByteSource::ofFile(path, startBytes); });
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        if (!saveFolder(*folder, &saving, [&] { return files.next(); })) {
            leaveOutFiles(m_done, LeftOutReason::NotReached, oneMessage);
            return;
        }
    if (m_done < ulCount)
        leaveOutFiles(m_done, LeftOutReason::Stopped, oneMessage);
    if (ulCount > 0)
        return;
    if (m_writer != &writeMail) { // which ends without a word
        emit OnIndivisibleProgressvalue(100);
        emit OnSubProgressHide();
        emit ProgressDailogHide();
    }
    bStopFlag = true;
}

bool QMailSaving::saveFolder(const FolderAttribNode &folder, FileSaving *saving,
                             const std::function<ByteSource()> &next)
{
    const size_t items = folder.state == stateTicked ? mailItemsOfFolder(folder.folderId).size() : 0;
    if (items > 0)
        saveLedger.enterFolder(folder.folderId);
    bool goesOn = true;
    for (size_t i = 0; i < items && goesOn; ++i) {
        showPercent(static_cast<int>(m_done * 100 / ulCount));
        if (bStopFlag)
            break;
        ++m_done;
        goesOn = saving->save(next());
    }
    saving->closeMailbox();
    // The end signals come once for the last file's folder and once for each folder behind it.
    if (goesOn && m_done == ulCount)
        emitFinished();
    return goesOn;
}
