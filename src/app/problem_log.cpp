#include "app/problem_log.h"

#include <QMutex>
#include <QMutexLocker>

namespace
{
QMutex mutex;
QStringList problems;
} // namespace

void reportProblem(const QString &sentence)
{
    const QMutexLocker lock(&mutex);
    if (!problems.contains(sentence))
        problems.append(sentence);
}

QStringList takeProblems()
{
    const QMutexLocker lock(&mutex);
    QStringList taken;
    taken.swap(problems);
    return taken;
}

bool hasProblems()
{
    const QMutexLocker lock(&mutex);
    return !problems.isEmpty();
}
