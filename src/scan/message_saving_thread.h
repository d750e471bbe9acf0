#pragma once

#include <QSet>
#include <QStringList>
#include <QThread>

#include <functional>
#include <memory>

class ByteSource;
enum class FileStep;
struct OlmText;
struct OlmWalkEvents;
struct OlmWalkResult;
struct StoreScan;

/// The scan thread: turns the selected store (m_selectedFile) into folder maps, file records and message
/// records. One object for the whole run of the program; each scan is one run of the thread. All readers are
/// members; each lies in a source file of its own and calls plain functions for everything that knows a
/// format. Signals reach the main thread queued.
class QMessageSavingThread : public QThread
{
    Q_OBJECT

public:
    explicit QMessageSavingThread(QObject *parent = nullptr);
    ~QMessageSavingThread() override;

    /// Starts a scan. While one runs it is asked to stop instead, and no new one begins.
    void SetInitialSettings();

    int m_mailClientIndex = 0; ///< client index (storeKinds)

    /// False: a scan for a save alone makes no records of mbox and Opera messages.
    bool m_indexMessages = true;
    /// True: the save is known to make exact copies, which find an archive's attachments wherever they stand.
    bool m_forExactCopies = false;

    // Readers; StoreScan tells which kind of store has which.
    void PostBoxFileSearch();       ///< mbox clients: Thunderbird and its like
    void FileSearch();              ///< Apple Mail (.emlx)
    void CreateFile();              ///< Outlook (.olm)
    void FileSearchForEml();        ///< MailMate
    void FileSearchForEmlandfEml(); ///< Outspring Mail
    void FileSearchForMbs();        ///< Opera Mail

signals:
    void OnShowProgressDlg();                        ///< a reader begins
    void OnIndivisibleProgressvalue(double percent); ///< overall progress
    void OnSubProgressvalue(double percent);         ///< progress within the current item
    void OnSubProgressHide();                        ///< the sub-progress is over
    void ProgressDailogHide();                       ///< the reader has finished
    void FinishScaning();                            ///< the reader has finished with data
    void NoDataIntoFile();                           ///< the reader found nothing
    /// One folder for the tree, parents before children.
    void MakeTreeWidget(qint64 folderId, const QString &name, qint64 parentId, const QString &path);

protected:
    void run() override;

private:
    /// Gathers every entry below a folder in AllFilePathInStrList; sets bCheckFucntion if the folder is there.
    void OnGetAllFileAndDir(const QString &path);
    /// Indexes one of them, and gives a mailbox its folder and record.
    bool takeEntry();
    /// Indexes a file (GetAllFieldsForTree); `shown`: sends its progress.
    bool indexWithProgress(const QString &path, bool shown);

    /// Opens the .olm file m_selectedFile read-only into fileDescriptor and lSize; -1 if that fails.
    int OpenDevice();
    /// Frees the records of the last .olm file.
    void CleanListAndHash();
    OlmWalkEvents eventsOfWalk();
    /// Puts an attachment on the pending lists; offset and size in bytes.
    void InitializeAttachment(const QString &path, qint64 offset, qint64 size);
    /// Makes the folder of an entry and the records of the messages in its XML, pBuff, which ends at `endOffset`
    /// in the archive.
    void InitializeMLRC(const OlmText &entry);
    /// The ends of a reader whose archive could not be opened, or holds no message.
    void endWithoutArchive();
    void emitNoArchiveData();
    /// Says what of an archive could not be read.
    void reportOlmProblems(const OlmWalkResult &walk);

    /// The scan of a store with a file for each message.
    void scanFileStore(const StoreScan &store);
    /// The start of a reader that searches for files: shows its progress; false if it is to stop at once.
    bool beginFiles();
    /// Its walk over the files found, up to the closing signals.
    /// Before these `atEnd` gets the step, and the file, that it ended at: Taken where it went through all.
    void takeFiles(const StoreScan &store, const std::function<FileStep(const QString &path)> &take,
                   const std::function<void(FileStep, const QString &path)> &atEnd);
    /// Tells what a scan has not taken; `step` and `path`: what it ended at, Taken where it went through all files.
    void tellPassedOver(const StoreScan &store, const QSet<QString> &usedParts, FileStep step,
                        const QString &path);
    /// Nothing to read: NoDataIntoFile, 100 per cent, and the stop flag.
    void emitNoData();
    /// The closing signals of a reader that has gone through all its input: OnSubProgressHide,
    /// ProgressDailogHide, FinishScaning.
    void emitFinished();
    void sendTree();

    std::unique_ptr<ByteSource> m_archive; ///< while an .olm file is read
    qint64 m_lostAttachments = 0;          ///< messages of it whose attachments were not found
};
