#include "save/mail_saving.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "app/start_worker.h"
#include "save/bundle_place.h"
#include "save/save_ledger.h"
#include "save/ticked_items.h"

#include <algorithm>
#include <iterator>

namespace
{
/// Which reader serves a store kind and a target; tested in this order. A pair without a row has no reader.
struct SaveReader {
    std::atomic<bool> *kindFlag;
    std::atomic<bool> *targetFlag;
    void (QMailSaving::*reader)();
};

const SaveReader saveReaders[] = {
    {&bemlandfemlfileFound, &bForAppleMail, &QMailSaving::FileSearchForEmlandfEmlAppleMail},
    {&bemlandfemlfileFound, &bForOutlookMail, &QMailSaving::FileSearchForEmlandfEmlOutlook},
    {&bEmlFileFound, &bForAppleMail, &QMailSaving::FileSearchForEmlAppleMail},
    {&bEmlFileFound, &bForOutlookMail, &QMailSaving::FileSearchForEmlOutlook},
    {&bEmlxFileFound, &bForOutlookMail, &QMailSaving::FileSearch},
    {&bMboxFileFound, &bForOutlookMail, &QMailSaving::PostBoxFileSearch},
    {&bMboxFileFound, &bForAppleMail, &QMailSaving::PostBoxFileSearch},
    {&bMbsFileFound, &bForOutlookMail, &QMailSaving::FileSearchForMbsOutlook},
    {&bMbsFileFound, &bForAppleMail, &QMailSaving::FileSearchForMbsAppleMail},
    {&bOlmFileFound, &bForAppleMail, &QMailSaving::OnMailSaving},
};
} // namespace

QMailSaving::QMailSaving(QObject *parent) : QThread(parent)
{
    bStopFlag = false;
}

void QMailSaving::SetInitialSettings()
{
    bStopFlag = false;
    if (isRunning()) {
        bStopFlag = true;
        m_wait.wakeAll();
    } else {
        startWorker(this);
    }
}

void QMailSaving::run()
{
    IsPreview = true;
    m_isOnDisk = false;
    saveLedger.clear();
    enterTickedFolders();
    const auto *const end = std::end(saveReaders);
    const auto *const row = std::find_if(std::begin(saveReaders), end, [](const SaveReader &reader) {
        return *reader.kindFlag && *reader.targetFlag;
    });
    if (row == end)
        return;
    if (bExactCopies)
        saveExactCopies();
    else
        (this->*row->reader)();
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
