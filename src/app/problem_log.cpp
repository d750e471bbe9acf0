#include "app/problem_log.h"

#include "app/path_list.h"

#include <QMutex>
#include <QMutexLocker>

#include <atomic>

namespace
{
QMutex mutex;
PathList problems;
std::atomic<bool> unread{false};
std::atomic<bool> unwritten{false};
} // namespace

void reportProblem(const QString &sentence)
{
    const QMutexLocker lock(&mutex);
    if (!problems.contains(sentence))
        problems.append(sentence);
}

void reportUnread(const QString &sentence)
{
    if (sentence.isEmpty())
        return;
    unread = true;
    reportProblem(sentence);
}

void reportUnwritten(const QString &sentence)
{
    unwritten = true;
    reportProblem(sentence);
}

bool takeUnread()
{
    return unread.exchange(false);
}

bool takeUnwritten()
{
    return unwritten.exchange(false);
}

QStringList takeProblems()
{
    const QMutexLocker lock(&mutex);
    const QStringList taken = problems.paths();
    problems.clear();
    return taken;
}

bool hasProblems()
{
    const QMutexLocker lock(&mutex);
    return problems.size() > 0;
}
