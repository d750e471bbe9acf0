#pragma once

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "scan/message_saving_thread.h"
#include "store_files.h"
#include "worker_run.h"

/// A store in a temporary folder, scans of it that begin as at the start of the program, and what they tell.
class ScanRun
{
public:
    explicit ScanRun(int client)
    {
        discardScanResult();
        CleanLinkedList();
        takeProblems();
        thread.m_mailClientIndex = client;
        noteEnd(&QMessageSavingThread::ProgressDailogHide, "hide");
        noteEnd(&QMessageSavingThread::FinishScaning, "finished");
        noteEnd(&QMessageSavingThread::NoDataIntoFile, "nothing");
        listen(&QMessageSavingThread::MakeTreeWidget, [this] { ++folders; });
        listen(&QMessageSavingThread::OnIndivisibleProgressvalue, [this](double shown) {
            percent = shown;
            if (shown >= stopFrom)
                bStopFlag = true;
        });
    }
    ~ScanRun()
    {
        discardScanResult();
        CleanLinkedList();
    }

    void write(const FileMap &files) const { writeFiles(path(), files); }
    QString path() const { return dir.path(); }
    QString path(const QString &file) const { return dir.path() + '/' + file; }
    /// Scans what is selected to the end. Gives the signals that ended the scan, in their order.
    QStringList scan(const QString &selected)
    {
        m_selectedFile = selected;
        ends.clear();
        folders = 0;
        if (!runToEnd(&thread) || bProcessRunning || bStopFlag)
            ends.append("the thread hangs");
        return ends;
    }
    QStringList scan() { return scan(path()); }
    /// Scans an Outlook 2011 archive of these bytes and the record that ends an archive.
    QStringList scanArchive(const QByteArray &archive)
    {
        write({{"backup.olm", archive + QByteArray("PK\5\6", 4) + QByteArray(18, '\0')}});
        return scan(path("backup.olm"));
    }

    QTemporaryDir dir;
    QMessageSavingThread thread;
    QStringList ends;       ///< "hide", "finished", "nothing"
    int folders = 0;        ///< that were told for the tree
    double percent = -1;    ///< shown last
    double stopFrom = 1000; ///< the percentage at which the scan is stopped

private:
    template <typename Signal, typename Function>
    void listen(Signal signal, Function function)
    {
        QObject::connect(&thread, signal, &thread, function, Qt::DirectConnection);
    }
    template <typename Signal>
    void noteEnd(Signal signal, const char *name)
    {
        listen(signal, [this, name] { ends.append(name); });
    }
};
