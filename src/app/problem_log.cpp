#include "app/problem_log.h"

#include "app/path_list.h"

#include <QMutex>
#include <QMutexLocker>

namespace
{
QMutex mutex;
PathList problems;
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
    const QStringList taken = problems.paths();
    problems.clear();
    return taken;
}

bool hasProblems()
{
    const QMutexLocker lock(&mutex);
    return problems.size() > 0;
}
