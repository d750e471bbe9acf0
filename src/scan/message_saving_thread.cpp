#include "scan/message_saving_thread.h"

#include "app/passed_over.h"
#include "app/shared_state.h"
#include "app/start_worker.h"
#include "platform/byte_source.h"
#include "scan/store_kinds.h"

#include <QStringList>

QMessageSavingThread::QMessageSavingThread(QObject *parent) : QThread(parent)
{
    bStopFlag = false;
}

QMessageSavingThread::~QMessageSavingThread() = default;

void QMessageSavingThread::SetInitialSettings()
{
    bStopFlag = false;
    if (isRunning())
        bStopFlag = true;
    else
        startWorker(this);
}

void QMessageSavingThread::run()
{
    setStoreKind(nullptr);
    bForAppleMail = false;
    bForOutlookMail = false;
    bProcessRunning = true;
    CleanLinkedList();
    passedOver.clear();
    bStopFlag = false;
    bParseDatabase = false;
    bParseDatabaseClose = false;

    if (const StoreKind *kind = findStoreKind(m_mailClientIndex); kind && kind->store) {
        setStoreKind(kind->store->kindFlag);
        (this->*kind->store->reader)();
        nextItr = 0;
    }

    bStopFlag = false;
    bProcessRunning = false;
    bCheckFucntion = false;
    for (QStringList *list : {&listOfPath1, &listOfPathOfPartialEmlx, &listOfPathOfOnlyEmlx,
                              &listOfPathOfOnlyEml, &listOfPathOfEmlxPart, &AllFilePathInStrList})
        list->clear();
    sendTree();
}

void QMessageSavingThread::sendTree()
{
    for (auto folder = objMapFID_PID.constBegin(); folder != objMapFID_PID.constEnd(); ++folder)
        emit MakeTreeWidget(folder.key(), objMapFID_Name.value(folder.key()), folder.value(),
                            MapLeftTreePath.value(folder.key()));
}

void QMessageSavingThread::emitFinished()
{
    emit OnSubProgressHide();
    emit ProgressDailogHide();
    emit FinishScaning();
}
