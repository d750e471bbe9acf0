#include "app/start_worker.h"

#include "app/problem_log.h"

#include <QThread>

void startWorker(QThread *worker)
{
    worker->start(QThread::LowPriority);
    if (worker->isRunning() || worker->isFinished())
        return;
    reportUnread(Problem::tr("nothing was done: the system gives no thread to work in"));
    QMetaObject::invokeMethod(worker, "finished", Qt::QueuedConnection);
}
