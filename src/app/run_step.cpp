#include "app/run_step.h"

#include <QMutex>
#include <QMutexLocker>

namespace
{
QMutex mutex;
RunStep current;
} // namespace

void setRunStep(const RunStep &step)
{
    const QMutexLocker lock(&mutex);
    current = step;
}

RunStep runStep()
{
    const QMutexLocker lock(&mutex);
    return current;
}
