#pragma once

#include <QString>

/// Which of how many mailboxes a scan or a save is at. The worker tells it, the progress dialog shows it. Safe from any
/// thread.
struct RunStep {
    QString name;     ///< of the mailbox, "" where nothing has been told
    qint64 place = 0; ///< from 1
    qint64 count = 0;
};

/// Tells, and asks, where the worker is.
void setRunStep(const RunStep &step);
RunStep runStep();
