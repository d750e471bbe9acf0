#include "scan/message_saving_thread.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "scan/file_store_scan.h"
#include "scan/no_data_reason.h"
#include "scan/opera_scan.h"
#include "scan/passed_over_scan.h"
#include "scan/store_kinds.h"

// The readers of stores with a file for each message, and their frame.

void QMessageSavingThread::FileSearch()
{
    scanFileStore(emlxStore);
}

void QMessageSavingThread::FileSearchForEml()
{
    scanFileStore(mailMateStore);
}

void QMessageSavingThread::FileSearchForEmlandfEml()
{
    scanFileStore(outspringStore);
}

void QMessageSavingThread::FileSearchForMbs()
{
    if (!beginFiles())
        return;
    OperaScan scan(m_indexMessages ? OperaFields::All : OperaFields::Folder);
    if (scan.find())
        takeFiles(
            operaStore, [&](const QString &path) { return scan.take(path); },
            [this](FileStep step, const QString &path) { tellPassedOver(operaStore, {}, step, path); });
}

void QMessageSavingThread::scanFileStore(const StoreScan &store)
{
    if (!beginFiles())
        return;
    FileStoreScan scan(store);
    if (!scan.find())
        return;
    takeFiles(
        store, [&](const QString &path) { return scan.take(path); },
        [&](FileStep step, const QString &path) { tellPassedOver(store, scan.usedParts(), step, path); });
}

void QMessageSavingThread::tellPassedOver(const StoreScan &store, const QSet<QString> &usedParts,
                                          FileStep step, const QString &path)
{
    TakenFiles taken{QLatin1String(store.pattern + 1), usedParts, step == FileStep::Taken, QString()};
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

void QMessageSavingThread::takeFiles(const StoreScan &store,
                                     const std::function<FileStep(const QString &path)> &take,
                                     const std::function<void(FileStep, const QString &path)> &atEnd)
{
    const QStringList &paths = *store.found;
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
