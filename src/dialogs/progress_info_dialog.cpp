#include "dialogs/progress_info_dialog.h"

#include "app/problem_log.h"
#include "app/run_step.h"
#include "app/shared_state.h"
#include "app/window/main_window.h"
#include "app/window/window_state.h"
#include "dialogs/problem_text.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>

namespace
{
constexpr double leastDone = 0.02;
constexpr double leastSeconds = 3;
} // namespace

QProgressInfo::QProgressInfo(QWidget *parent) : QDialog(parent)
{
    setupUi(this);
    init();
    connect(stopButton, &QPushButton::clicked, this, &QProgressInfo::OnStop);
}

void QProgressInfo::init()
{
    setWindowFlags(Qt::Sheet);
    m_runs.start();
    // Return and Space do nothing, a stray key would stop hours of work; this one is meant.
    stopButton->setShortcut(QKeySequence(QStringLiteral("Alt+S")));
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

void QProgressInfo::showStep(double percent)
{
    const RunStep step = runStep();
    const double within = qBound(0.0, percent / 100, 1.0);
    const bool counted = step.count > 0;
    const double places = static_cast<double>(qMax<qint64>(1, step.count));
    const QString left = timeLeft(counted ? (static_cast<double>(step.place - 1) + within) / places : within);
    QString place;
    if (counted) {
        place = tr(", %1 of %2").arg(step.place).arg(step.count);
        const int room = stepLabel->width() - stepLabel->fontMetrics().horizontalAdvance(place + left);
        place.prepend(stepLabel->fontMetrics().elidedText(step.name, Qt::ElideMiddle, room));
        stepLabel->setToolTip(step.name);
    }
    stepLabel->setText(place + left);
}

// Nothing while so little is done that the guess would jump.
QString QProgressInfo::timeLeft(double done) const
{
    const double seconds = static_cast<double>(m_runs.elapsed()) / 1000;
    if (done < leastDone || seconds < leastSeconds)
        return {};
    const int left = static_cast<int>(seconds * (1 - done) / done);
    const QString text =
        left < 60 ? tr("less than a minute left") : tr("about %n minute(s) left", nullptr, (left + 30) / 60);
    return QStringLiteral("  \u2013  ") + text;
}

void QProgressInfo::showEndedEarly(const QString &reason)
{
    stepLabel->clear();
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
