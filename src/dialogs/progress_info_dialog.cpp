#include "dialogs/progress_info_dialog.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "app/window/main_window.h"
#include "app/window/window_state.h"
#include "dialogs/problem_text.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>

QProgressInfo::QProgressInfo(QWidget *parent) : QDialog(parent)
{
    setupUi(this);
    init();
    connect(stopButton, &QPushButton::clicked, this, &QProgressInfo::OnStop);
}

void QProgressInfo::init()
{
    setWindowFlags(Qt::Sheet);
    stopButton->setStyleSheet(QStringLiteral(
        "QPushButton{min-height: 32px;min-width: 32px; border-image: url(:/images/img_Stop.png)}"
        "QPushButton:hover { border-image: url(:/images/img_HoverStop.png)}"
        "QPushButton:pressed { border-image: url(:/images/img_StopClick.png);}"
        "QPushButton:disabled { border-image: url(:/images/img_StopClick.png);}"));
}

void QProgressInfo::setTask(const QString &text)
{
    SearchLabel->setText(text);
}

void QProgressInfo::showEndedEarly(const QString &reason)
{
    SearchLabel->setText(reason + QLatin1Char('\n') + tr("Press Stop to go on."));
    QRect place = SearchLabel->geometry();
    place.setRight(stopButton->x() - 10);
    const int more = qMax(0, SearchLabel->neededHeight(place.width()) - place.height());
    place.setHeight(place.height() + more);
    SearchLabel->setGeometry(place);
    groupBox->resize(groupBox->width(), groupBox->height() + more);
    setFixedSize(width(), height() + more);
}

void QProgressInfo::OnProgressDailogHide()
{
    hide();
    bParseDatabase = false;
    pMainWindow->endRun();
}

void QProgressInfo::keyPressEvent(QKeyEvent *event)
{
    event->ignore();
}

void QProgressInfo::closeEvent(QCloseEvent *event)
{
    event->ignore();
}

bool QProgressInfo::confirmAbort()
{
    QMessageBox question(QMessageBox::Warning, tr("VelmoraMailConverter"),
                         tr("Process cannot be resumed from the current stage."),
                         QMessageBox::Yes | QMessageBox::No, this);
    question.setInformativeText(tr("Do you want to abort the current process?"));
    question.setDefaultButton(QMessageBox::No);
    return question.exec() == QMessageBox::Yes;
}

// The worker goes on while the question is up; it may even have ended when the answer comes.
void QProgressInfo::OnStop()
{
    if (!confirmAbort())
        return;
    hide();
    pMainWindow->enablePreferences();
    if (IsPreview)
        stopSave();
    else
        stopScan();
    pMainWindow->endRun();
}

void QProgressInfo::stopSave()
{
    IsPreview = false;
    bStopFlag = true;
    bProcessRunning = false;
    bParseDatabase = false;
    bParseDatabaseClose = false;
    if (FileSavingIdentification) {
        pMainWindow->showSaveResult(tr("\nProcess aborted. File saved Successfully at location ") +
                                    FileSavingPath);
        FileSavingIdentification = false;
    }
}

// The worker is asked only after the box has been closed.
void QProgressInfo::stopScan()
{
    showBox(nullptr, QMessageBox::Information, QString(),
            withProblems(tr("\nProcess Aborted."), takeProblems()));
    bStopFlag = true;
    bProcessRunning = false;
    bParseDatabase = false;
    bParseDatabaseClose = false;
    pMainWindow->hideStatusProgress();
}
