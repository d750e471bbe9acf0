#include "cli/worker_run.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "save/mail_saving.h"
#include "scan/message_saving_thread.h"

#include <QEventLoop>
#include <QHash>
#include <QTimer>

#include <atomic>
#include <csignal>
#include <cstdio>

#include <unistd.h>

namespace
{
std::atomic<bool> signalled{false};

void onStopSignal(int)
{
    signalled = true;
    bStopFlag = true;
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

// A worker clears the stop flag when it starts, so a signal just before that is said again.
constexpr int repeatStopMilliseconds = 50;

// Runs a worker to its end in an event loop, so that its queued signals arrive.
template <typename Worker>
void runWorker(Worker *worker)
{
    QEventLoop loop;
    QTimer repeatStop;
    QObject::connect(&repeatStop, &QTimer::timeout, [] {
        if (signalled)
            bStopFlag = true;
    });
    QObject::connect(worker, &QThread::finished, &loop, &QEventLoop::quit);
    // Hands over what the worker has written where a race detector sees it; it does not see the toolkit's own waiting.
    std::atomic<bool> ended{false};
    QObject::connect(
        worker, &QThread::finished, worker, [&ended] { ended = true; }, Qt::DirectConnection);
    repeatStop.start(repeatStopMilliseconds);
    worker->SetInitialSettings();
    loop.exec();
    while (!ended)
        QThread::yieldCurrentThread();
    worker->wait();
}

QString treePath(const QHash<qint64, QString> &treeOfFolder, qint64 parent, const QString &name)
{
    const auto above = treeOfFolder.constFind(parent);
    return above == treeOfFolder.constEnd() ? name : *above + QLatin1Char('/') + name;
}
} // namespace

QString outcomeName(Outcome outcome)
{
    constexpr const char *names[] = {"finished", "nothing", "ended", "stopped"};
    return QLatin1String(names[static_cast<size_t>(outcome)]);
}

void catchStopSignals()
{
    std::signal(SIGINT, onStopSignal);
    std::signal(SIGTERM, onStopSignal);
}

bool stopSignalled()
{
    return signalled;
}

ProgressLine::ProgressLine(const QString &task, bool wanted)
    : m_task(task), m_shown(wanted && ::isatty(STDERR_FILENO) == 1)
{
}

ProgressLine::~ProgressLine()
{
    if (m_shown && m_last >= 0)
        std::fputc('\n', stderr);
}

void ProgressLine::show(double percent)
{
    const int whole = qBound(0, static_cast<int>(percent), 100);
    if (!m_shown || whole == m_last)
        return;
    m_last = whole;
    std::fprintf(stderr, "\r%s %3d %%", qPrintable(m_task), whole);
    std::fflush(stderr);
}

ScanResult runScan(int client, ScanFor purpose, bool showProgress)
{
    ScanResult result;
    QMessageSavingThread scan;
    scan.m_mailClientIndex = client;
    scan.m_indexMessages = purpose == ScanFor::Browsing;
    scan.m_forExactCopies = bExactCopies;
    bool finished = false;
    bool nothing = false;
    QHash<qint64, QString> treeOfFolder;
    ProgressLine line(QStringLiteral("Scanning Database File ..."), showProgress);

    QObject context; // lives here: slots on it run in this thread, queued
    QObject::connect(&scan, &QMessageSavingThread::FinishScaning, &context, [&] { finished = true; });
    QObject::connect(&scan, &QMessageSavingThread::NoDataIntoFile, &context, [&] { nothing = true; });
    QObject::connect(&scan, &QMessageSavingThread::OnIndivisibleProgressvalue, &context,
                     [&](double percent) { line.show(percent); });
    QObject::connect(&scan, &QMessageSavingThread::MakeTreeWidget, &context,
                     [&](qint64 id, const QString &name, qint64 parent, const QString &path) {
                         addFolderRecord(id, parent);
                         const QString tree = treePath(treeOfFolder, parent, name);
                         treeOfFolder.insert(id, tree);
                         result.folders.push_back({id, parent, name, path, tree});
                     });
    runWorker(&scan);

    const bool unread = takeUnread();
    if (signalled)
        result.outcome = Outcome::Stopped;
    else if (unread || !(finished || nothing))
        result.outcome = Outcome::Ended;
    else
        result.outcome = finished ? Outcome::Finished : Outcome::Nothing;
    return result;
}

Outcome runSave(bool showProgress, SaveMode mode, bool toDisk)
{
    QMailSaving save;
    save.m_mode = mode;
    save.m_toDisk = toDisk;
    bool finished = false;
    ProgressLine line(QStringLiteral("Saving Database File ..."), showProgress);

    QObject context;
    QObject::connect(&save, &QMailSaving::FinishSaving, &context, [&] { finished = true; });
    QObject::connect(&save, &QMailSaving::OnIndivisibleProgressvalue, &context,
                     [&](double percent) { line.show(percent); });
    runWorker(&save);
    IsPreview = false;

    if (finished)
        return Outcome::Finished;
    return signalled ? Outcome::Stopped : Outcome::Ended;
}
