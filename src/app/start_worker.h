#pragma once

class QThread;

/// Starts a worker's thread at low priority. Where the system gives no thread that is told to the problem log as
/// something unread, and the worker says `finished` all the same, so that who waits for its end goes on.
void startWorker(QThread *worker);
