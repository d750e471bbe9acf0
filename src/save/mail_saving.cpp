#include "save/mail_saving.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "app/start_worker.h"
#include "save/bundle_place.h"
#include "save/save_ledger.h"
#include "save/ticked_items.h"
#include "save/writers.h"

QMailSaving::QMailSaving(QObject *parent) : QThread(parent)
{
    bStopFlag = false;
}

void QMailSaving::SetInitialSettings()
{
    bStopFlag = false;
    if (isRunning())
        bStopFlag = true;
    else
        startWorker(this);
}

void QMailSaving::run()
{
    IsPreview = true;
    m_isOnDisk = false;
    saveLedger.clear();
    enterTickedFolders();
    m_writer = pickWriter();
    if (!m_writer)
        return;
    if (bExactCopies)
        saveExactCopies();
    else
        (this->*m_writer->reader)();
    if (!saveLedger.addsUp())
        reportProblem(
            Problem::tr("the messages of this save don't add up, which is a fault of this program"));
}

void QMailSaving::emitFinished()
{
    if (m_toDisk && !m_isOnDisk)
        bundlePlace.sync([] { return !bStopFlag; });
    m_isOnDisk = true;
    emit OnSubProgressHide();
    emit ProgressDailogHide();
    emit FinishSaving();
}
