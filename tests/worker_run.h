#pragma once

#include "app/problem_log.h"

#include <QThread>

#include <atomic>

/// Takes the problems told: the one there should be, or all of them as a text that says so.
inline QString onlyProblem()
{
    const QStringList problems = takeProblems();
    return problems.size() == 1 ? problems.first() : QString("%1 problems").arg(problems.size());
}

/// Starts a worker thread and waits for its end; false if that takes more than half a minute. The end is handed over
/// by an atomic as well, since a race detector does not see into the toolkit's own waiting.
template <typename Worker>
bool runToEnd(Worker *worker)
{
    std::atomic<bool> ended{false};
    const auto atEnd = QObject::connect(
        worker, &QThread::finished, worker, [&] { ended = true; }, Qt::DirectConnection);
    worker->SetInitialSettings();
    const bool waited = worker->wait(30000);
    QObject::disconnect(atEnd);
    return waited && ended;
}
