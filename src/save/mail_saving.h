#pragma once

#include "save/mailbox_file.h"

#include <QThread>
#include <QWaitCondition>

struct FileSaveRow;

/// The save thread: writes the ticked folders of the last scan into a bundle below saveDir. One object for the
/// whole run of the program; each save is one run of the thread, which picks a reader by the store kind flag
/// and the target flag. Signals reach the main thread queued. What a save has done is told by saveLedger when it has ended.
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

    // Readers, each in the source file of its store.
    void PostBoxFileSearch();
    void FileSearch();
    void FileSearchForEmlOutlook();
    void FileSearchForEmlAppleMail();
    void FileSearchForEmlandfEmlOutlook();
    void FileSearchForEmlandfEmlAppleMail();
    void FileSearchForMbsOutlook();
    void FileSearchForMbsAppleMail();
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
    /// The frame of the readers of stores that keep one file for each message.
    void saveFiles(const FileSaveRow &row);
    /// Copies one mailbox file of an mbox store; `prepared`: the bundle is laid out.
    void copyMailbox(const QString &path, bool *prepared);
    /// The exact copies of all ticked folders; the next two give false after a stop.
    void saveExactCopies();
    bool saveExactFiles();
    bool saveExactArchive();
    /// Sends a percentage that is not the one sent last.
    void showPercent(int percent);
    /// OnSubProgressHide, ProgressDailogHide, FinishSaving. All is written; before the first time it goes to the disk.
    void emitFinished();

    QWaitCondition m_wait;
    int m_shownPercent = -1;
    bool m_isOnDisk = false; ///< of this save
};
