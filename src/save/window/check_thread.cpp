#include "save/window/check_thread.h"

CheckThread::CheckThread(const SaveLedger &ledger) : m_ledger(ledger) {}

CheckThread::~CheckThread()
{
    m_stop = true;
    wait();
}

void CheckThread::run()
{
    int shown = -1;
    m_result = checkBundle(m_ledger, [&](qint64 done, qint64 bytes) {
        const int percent = static_cast<int>(done * 100 / qMax<qint64>(1, bytes));
        if (percent != shown)
            emit progress(percent);
        shown = percent;
        return !m_stop;
    });
}
