#pragma once

#include "platform/byte_source.h"
#include "save/mailbox_file.h"

#include <QThread>

#include <functional>

struct MailItemNode;
class FileSaving;
struct FolderAttribNode;
struct Writer;

/// The save thread: writes the ticked folders of the last scan into a bundle below saveDir. One object for the
/// whole run of the program; each save is one run of the thread, which picks a writer by the store kind flag and the target
/// flag (pickWriter). Signals reach the main thread queued. What a save has done is told by saveLedger when it has ended.
class QMailSaving : public QThread
{
    Q_OBJECT

public:
    explicit QMailSaving(QObject *parent = nullptr);

    /// Whether the next saves write, or only count what they would write: no file is made, changed or removed then.
    SaveMode m_mode = SaveMode::Write;
    /// Whether a save brings its bundle to the disk before it says that it has finished.
    bool m_toDisk = false;

    /// Starts a save. While one runs it is asked to stop instead, and no new one begins.
    void SetInitialSettings();

    // Readers; Writer tells which one serves a store and a bundle.
    /// Mbox clients: Thunderbird and its like.
    void PostBoxFileSearch();
    /// Apple Mail (.emlx).
    void FileSearch() { saveFiles(); }
    /// MailMate.
    void FileSearchForEmlOutlook() { saveFiles(); }
    void FileSearchForEmlAppleMail() { saveFiles(); }
    /// Outspring Mail.
    void FileSearchForEmlandfEmlOutlook() { saveFiles(); }
    void FileSearchForEmlandfEmlAppleMail() { saveFiles(); }
    /// Opera Mail.
    void FileSearchForMbsOutlook() { saveFiles(); }
    void FileSearchForMbsAppleMail() { saveFiles(); }
    /// Outlook (.olm).
    void OnMailSaving();

signals:
    void OnShowProgressDlg();                        ///< a reader begins
    void OnIndivisibleProgressvalue(double percent); ///< overall progress
    void OnSubProgressHide();                        ///< a reader has ended
    void ProgressDailogHide();                       ///< likewise
    void FinishSaving();                             ///< likewise; may come several times in one save
    void ShowProgressLabel();                        ///< the OLM reader has counted; nothing listens
    void NoDataIntoFile();                           ///< no reader sends it
    void OnSubProgressvalue(double percent);         ///< no reader sends it
    void SettingForOlm(qint64 value);                ///< no reader sends it
    void SigForProgressValueOfOlm(qint64 value);     ///< no reader sends it

protected:
    void run() override;

private:
    /// The reader of stores that keep one file for each message, and its walk over one folder: false if it is over.
    void saveFiles();
    bool saveFolder(const FolderAttribNode &folder, FileSaving *saving,
                    const std::function<ByteSource()> &next);
    /// Copies one mailbox file of an mbox store; `prepared`: the bundle is laid out.
    void copyMailbox(const MailItemNode &mailbox, bool *prepared);
    void openTarget(MailboxFile *target, bool *prepared);
    /// The exact copies of all ticked folders; the next two give false after a stop.
    void saveExactCopies();
    bool saveExactFiles();
    bool saveExactArchive();
    /// Sends a percentage that is not the one sent last.
    void showPercent(int percent);
    /// OnSubProgressHide, ProgressDailogHide, FinishSaving. All is written; before the first time it goes to the disk.
    void emitFinished();

    const Writer *m_writer = nullptr; ///< of this save
    quint64 m_done = 0;               ///< message files taken up in this save
    int m_shownPercent = -1;
    bool m_isOnDisk = false; ///< of this save
};
