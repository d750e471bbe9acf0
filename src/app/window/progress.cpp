#include "app/window/main_window.h"

#include "app/passed_over.h"
#include "app/problem_log.h"
#include "app/run_step.h"
#include "app/shared_state.h"
#include "app/window/my_button.h"
#include "app/window/window_state.h"
#include "browse/folder_tree.h"
#include "dialogs/import_window_dialog.h"
#include "dialogs/problem_text.h"
#include "dialogs/progress_info_dialog.h"
#include "platform/window/text_fit.h"
#include "save/bundle.h"
#include "save/bundle_place.h"
#include "save/mail_saving.h"
#include "save/save_ledger.h"
#include "save/save_report.h"
#include "scan/message_saving_thread.h"
#include "scan/scan_count.h"
#include "scan/window/parse_database_dialog.h"

#include <QAction>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTreeWidget>

// ---- A run from its start to its end ----

void QConverterMainWindow::beginRun()
{
    m_run = Run::Active;
    setRunStep({});
    m_pMySaveButton->setEnabled(false);
    m_pMyOpenButton->setEnabled(false);
    m_pSaveAction->setEnabled(false);
    m_pFolderTree->setEnabled(false);
}

void QConverterMainWindow::endRun()
{
    if (m_run == Run::Active)
        m_run = Run::Ending;
    m_pMySaveButton->setEnabled(true);
    m_pMyOpenButton->setEnabled(true);
    m_pSaveAction->setEnabled(true);
    m_pFolderTree->setEnabled(true);
}

bool QConverterMainWindow::workerIsBusy()
{
    if (m_listLoading)
        return true;
    if (m_run == Run::Active) {
        if (m_pProgressInfo)
            m_pProgressInfo->raise();
        return true;
    }
    letWorkersEnd();
    return false;
}

void QConverterMainWindow::letWorkersEnd()
{
    for (QThread *worker :
         {static_cast<QThread *>(pMessageSavingThread), static_cast<QThread *>(pMailSaving)}) {
        QEventLoop untilEnd;
        connect(worker, &QThread::finished, &untilEnd, &QEventLoop::quit);
        if (worker->isRunning())
            untilEnd.exec(QEventLoop::ExcludeUserInputEvents);
        worker->wait();
    }
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall); // what it said last
}

// A worker's thread has ended. Mostly its end signals have been here before; a reader that gave up sends none.
void QConverterMainWindow::onWorkerEnded()
{
    const bool endedEarly = m_run == Run::Active;
    bundlePlace.finish(false); // of a save whose end signals have not been here
    m_run = Run::None;
    if (m_pImportWindow->waitsForReport()) {
        m_pImportWindow->addProblems(takeProblems());
        tellReport();
    }
    if (endedEarly)
        tellEndedEarly();
    else if (hasProblems())
        showBox(this, QMessageBox::Information, tr("VelmoraMailConverter"), problemText(takeProblems()));
}

// The progress dialog stays until the user presses Stop, and says why. Without a dialog the controls come back at once.
void QConverterMainWindow::tellEndedEarly()
{
    QString text = problemText(takeProblems());
    if (text.isEmpty())
        text = tr("The process ended before it was done.");
    if (m_pProgressInfo && m_pProgressInfo->isVisible()) {
        m_pFolderTree->setEnabled(true);
        m_pProgressInfo->showEndedEarly(text);
        return;
    }
    IsPreview = false;
    endRun();
    showBox(this, QMessageBox::Information, tr("VelmoraMailConverter"), text);
}

void QConverterMainWindow::enablePreferences()
{
    m_pPreferencesAction->setEnabled(true);
}

// ---- Slots of the workers' signals ----

void QConverterMainWindow::ShowProgressDlg()
{
    if (m_pProgressInfo)
        m_pProgressInfo->deleteLater();
    m_pProgressInfo = new QProgressInfo(this);
    connect(pMessageSavingThread, &QMessageSavingThread::ProgressDailogHide, m_pProgressInfo,
            &QProgressInfo::OnProgressDailogHide);
    connect(pMailSaving, &QMailSaving::ProgressDailogHide, m_pProgressInfo,
            &QProgressInfo::OnProgressDailogHide);
    m_pProgressBar = new QProgressBar(m_pProgressInfo);
    m_pProgressBar->setGeometry(69, 24, 371, 9);
    m_pProgressBar->setAccessibleName(tr("Progress"));
    m_pProgressBar->setTextVisible(false); // a bar of this height has no room for it
    const bool saving = bForOutlookMail || bForAppleMail;
    m_pProgressInfo->setTask(saving ? tr("Saving Database File ...") : tr("Scanning Database File ..."));
    m_pProgressInfo->show();
}

void QConverterMainWindow::SetIndivisibleProgress(double value)
{
    if (m_pProgressBar)
        m_pProgressBar->setValue(qMin(static_cast<int>(value), m_pProgressBar->maximum()));
    if (m_pProgressInfo)
        m_pProgressInfo->showStep(value);
}

void QConverterMainWindow::SetSubProgress(double value)
{
    hideStatusProgress();
    m_pStatusProgress->setValue(static_cast<int>(value));
}

void QConverterMainWindow::SetProgressValueForOlmMail()
{
    m_pStatusProgress->setValue(m_pStatusProgress->value() + 1);
}

void QConverterMainWindow::SetProgressHide()
{
    if (m_pProgressInfo)
        m_pProgressInfo->hide();
    hideStatusProgress();
    endRun();
}

static QString scanNumbers()
{
    const ScanCount count = countScan();
    const QLocale locale;
    QString numbers = QConverterMainWindow::tr("Messages: %1, folders: %2.")
                          .arg(locale.toString(count.messages), locale.toString(count.folders));
    if (passedOver.count() > 0)
        numbers += QConverterMainWindow::tr("\nPassed over: %1, see the details.")
                       .arg(locale.toString(passedOver.count()));
    return numbers;
}

void QConverterMainWindow::HideProgressBar()
{
    if (bForOutlookMail || bForAppleMail) {
        finishSave();
        return;
    }
    const QStringList problems = takeProblems();
    const QStringList details = problems.mid(mostProblems) + passedOver.sentences();
    showBox(nullptr, QMessageBox::Information, QString(),
            withProblems(tr("\nMailbox scan completed successfully."), problems), scanNumbers(),
            details.join(QLatin1Char('\n')));
}

// The end signal may come several times in one save, and once more after a Stop that came too late.
void QConverterMainWindow::finishSave()
{
    if (!IsPreview)
        return;
    pMailSaving->wait(); // it may still be looking at the records of further folders
    IsPreview = false;
    const bool unread = takeUnread(); // both are taken
    const bool lost = takeUnwritten() || unread;
    const bool isWhole = !lost && saveLedger.isComplete() && saveLedger.addsUp();
    bundlePlace.finish(isWhole);
    if (!isWhole || takeUnwritten()) {
        showSaveResult(tr("\nWhat was saved so far is at location ") + FileSavingPath);
        return;
    }
    unmarkAllFolders();
    checkAllFolderItems(Qt::Unchecked);
    showSaveResult(tr("\nFile saved successfully at location ") + FileSavingPath);
}

void QConverterMainWindow::showSaveResult(const QString &text)
{
    m_pImportWindow->showMessage(text, takeProblems());
    if (!pMailSaving->isRunning())
        tellReport();
}

// A save that was asked to stop fills its account up to its end.
void QConverterMainWindow::tellReport()
{
    SaveReport report;
    report.bundle = FileSavingPath;
    report.bundleStands = QFileInfo::exists(FileSavingPath);
    report.files = ulCount;
    const qint64 free = freeBytesIn(saveDir);
    report.freeBytes = free < 0 ? free : free + saveLedger.bytes();
    if (bStopFlag)
        report.end = SaveReport::End::Stopped;
    else if (!saveLedger.isComplete())
        report.end = SaveReport::End::Ended;
    m_pImportWindow->showReport(report, saveLedger);
}

void QConverterMainWindow::OnNoDataIntoFile()
{
    if (m_pProgressInfo)
        m_pProgressInfo->hide();
    endRun();
    m_pMySaveButton->setEnabled(false);
    m_pSaveAction->setEnabled(false);
    showBox(nullptr, QMessageBox::Information, QString(), tr("\nSelected file is either invalid or empty."),
            problemText(takeProblems()));
    bParseDatabaseClose = true;
    bParseDatabase = false;
    bStopFlag = false;
    m_selectedFile.clear();
}

// ---- The status bar ----

void QConverterMainWindow::hideStatusProgress()
{
    m_pStatusProgress->hide();
    m_pStatusStopButton->hide();
}

void QConverterMainWindow::OnStopPushButton()
{
    bStopFlag = false;
}

void QConverterMainWindow::OnStatusBarValue(const QString &name, uint count)
{
    sSelectedItemList = name;
    m_pFolderNameLabel->setText(name + QLatin1Char(':'));
    m_pCountLabel->setText(QString::number(count));
    for (QLabel *label : {m_pFolderNameLabel, m_pCountLabel}) {
        label->setFont(lucidaFont(11));
        label->setMargin(0);
    }
    m_pMessageList->setSortingEnabled(true);
    hideStatusProgress();
}
