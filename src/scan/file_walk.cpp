#include "scan/message_saving_thread.h"

#include "app/shared_state.h"
#include "scan/file_store_scan.h"

// The frame of the readers that search for files.

void QMessageSavingThread::scanFileStore(const FileStore &store)
{
    if (!beginFiles())
        return;
    FileStoreScan scan(store);
    if (scan.find())
        takeFiles(scan.paths(), [&](const QString &path) { return scan.take(path); });
}

bool QMessageSavingThread::beginFiles()
{
    if (bStopFlag)
        return false;
    emit OnShowProgressDlg();
    emit OnIndivisibleProgressvalue(0);
    return true;
}

void QMessageSavingThread::takeFiles(const QStringList &paths,
                                     const std::function<FileStep(const QString &path)> &take)
{
    if (paths.isEmpty()) {
        emitNoData();
        return;
    }
    int percent = 0;
    for (int i = 0; i < paths.size(); ++i) {
        const int now = static_cast<int>(qint64(i) * 100 / paths.size());
        if (now != percent)
            emit OnIndivisibleProgressvalue(now);
        percent = now;
        if (bStopFlag)
            return;
        switch (take(paths.at(i))) {
        case FileStep::Taken:
            break;
        case FileStep::WrongStore:
            emitNoData();
            return;
        case FileStep::Unreadable:
            return;
        }
    }
    emitFinished();
}

void QMessageSavingThread::emitNoData()
{
    emit NoDataIntoFile();
    emit OnIndivisibleProgressvalue(100);
    bStopFlag = true;
}
