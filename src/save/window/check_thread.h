#pragma once

#include "save/bundle_check.h"

#include <QThread>

#include <atomic>

/// Reads a finished bundle again, beside everything else the user does. It can be stopped at any time: it changes
/// nothing.
class CheckThread : public QThread
{
    Q_OBJECT

public:
    /// Looks at what this account tells of.
    explicit CheckThread(const SaveLedger &ledger);
    /// Stops the look and waits for its end.
    ~CheckThread() override;

    /// What was found; to be called when the thread has ended.
    const BundleCheck &result() const { return m_result; }

signals:
    void progress(int percent);

protected:
    void run() override;

private:
    const SaveLedger m_ledger; ///< its own, a new save may begin meanwhile
    BundleCheck m_result;
    std::atomic<bool> m_stop{false};
};
