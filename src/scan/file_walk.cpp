#include "scan/message_saving_thread.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "scan/file_store_scan.h"
#include "scan/no_data_reason.h"
#include "scan/passed_over_scan.h"

// The frame of the readers that search for files.

void QMessageSavingThread::scanFileStore(const FileStore &store)
{
    if (!beginFiles())
        return;
    FileStoreScan scan(store);
    if (!scan.find())
        return;
    takeFiles(
        scan.paths(), [&](const QString &path) { return scan.take(path); },
        [&](FileStep step, const QString &path) {
            const QString suffix = QLatin1String(store.pattern + 1);
            tellPassedOver({suffix, scan.usedParts(), true, QString()}, step, path);
        });
}

// Tells what the scan has not taken; `step` and `path`: what it ended at, Taken where it went through all files.
void QMessageSavingThread::tellPassedOver(TakenFiles taken, FileStep step, const QString &path)
{
    taken.isWhole = step == FileStep::Taken;
    if (step == FileStep::Unreadable)
        taken.unreadable = path;
    if (step == FileStep::WrongStore)
        reportProblem(Problem::tr("this file belongs to another client's store: ") + path);
    tellPassedOverFiles(taken);
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
                                     const std::function<FileStep(const QString &path)> &take,
                                     const std::function<void(FileStep, const QString &path)> &atEnd)
{
    if (paths.isEmpty()) {
        atEnd(FileStep::Taken, QString());
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
        const FileStep step = take(paths.at(i));
        if (step == FileStep::Taken)
            continue;
        atEnd(step, paths.at(i));
        if (step == FileStep::WrongStore)
            emitNoData();
        return;
    }
    atEnd(FileStep::Taken, QString());
    emitFinished();
}

void QMessageSavingThread::emitNoData()
{
    reportNoData(false);
    emit NoDataIntoFile();
    emit OnIndivisibleProgressvalue(100);
    bStopFlag = true;
}
