#include "save/mail_saving.h"

#include "app/shared_state.h"

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
        start(QThread::LowPriority);
    }
}

void QMailSaving::run()
{
    IsPreview = true;
    for (const SaveReader &row : saveReaders) {
        if (*row.kindFlag && *row.targetFlag) {
            (this->*row.reader)();
            return;
        }
    }
}

void QMailSaving::emitFinished()
{
    emit OnSubProgressHide();
    emit ProgressDailogHide();
    emit FinishSaving();
}
