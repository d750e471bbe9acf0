#include "app/window/main_window.h"

#include "app/shared_state.h"
#include "app/window/my_button.h"
#include "app/window/window_state.h"
#include "browse/window/elided_label.h"
#include "dialogs/progress_info_dialog.h"
#include "dialogs/repair_complete_dialog.h"
#include "platform/window/text_fit.h"
#include "save/bundle_place.h"
#include "save/mail_saving.h"
#include "scan/message_saving_thread.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopWidget>
#include <QEventLoop>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>

namespace
{
const char boxTitle[] = "VelmoraMailConverter";
constexpr int placementOffset = 100; ///< pixels left of and above the centre of the screen
} // namespace

QConverterMainWindow::QConverterMainWindow() : QMainWindow(nullptr, Qt::WindowFlags())
{
    pMainWindow = this;
    setContextMenuPolicy(Qt::NoContextMenu);
    createPreferences();
    OnInit();
    const QRect desktop = QApplication::desktop()->geometry();
    move(qMax(0, (desktop.width() - width()) / 2 - placementOffset),
         qMax(0, (desktop.height() - height()) / 2 - placementOffset));
}

QConverterMainWindow::~QConverterMainWindow()
{
    hide(); // the focus leaves its control, which may change its picture, while all of them are there
    for (QThread *worker :
         {static_cast<QThread *>(pMessageSavingThread), static_cast<QThread *>(pMailSaving)}) {
        // A worker that has only just been started clears the flag once more, so it is said until it has ended.
        while (!worker->wait(20))
            bStopFlag = true;
    }
    IsPreview = false;
    bundlePlace.finish(false);
    delete pMessageSavingThread;
    delete pMailSaving;
    pMessageSavingThread = nullptr;
    pMailSaving = nullptr;
    m_pParseDatabase = nullptr;
    m_pSaveAs = nullptr;
    m_pRepairComplete = nullptr;
    m_pMyOpenButton = m_pMySaveButton = m_pMyHelpButton = nullptr;
    pMainWindow = pConverterWin = nullptr;
}

void QConverterMainWindow::OnInit()
{
    createAbout();
    m_pRepairComplete = new RepairComplete(this);
    OnInitialize();
    CreateLeftDockWindows();
    ConnectSignals();
    setUnifiedTitleAndToolBarOnMac(true);
    for (QLabel *label : {m_pFolderNameLabel, m_pCountLabel}) {
        label->clear();
        label->setFont(lucidaFont(9));
        statusBar()->addWidget(label);
    }
}

void QConverterMainWindow::OnInitialize()
{
    CreateActions();
    CreateMyToolBar();
    CreateToolBar();
    CreateMenuBar();
    createStatusBar();
}

void QConverterMainWindow::createStatusBar()
{
    auto *bar = new QStatusBar(this);
    setStatusBar(bar);
    bar->setSizeGripEnabled(true);
    bar->setMaximumHeight(25);
    bar->setStyleSheet(QStringLiteral("QStatusBar::item {border: none;}"));

    m_pFolderNameLabel = new ElidedLabel(this);
    m_pCountLabel = new QLabel(this);
    m_pFolderNameLabel->setObjectName(QStringLiteral("folderNameLabel"));
    m_pCountLabel->setObjectName(QStringLiteral("countLabel"));

    m_pStatusProgress = new QProgressBar(this);
    m_pStatusProgress->setMaximumSize(170, 9);
    m_pStatusProgress->setAccessibleName(tr("Progress"));
    bar->addPermanentWidget(m_pStatusProgress, 132);
    auto *separator = new QLabel(this);
    separator->setMaximumSize(1, 1);
    bar->addPermanentWidget(separator);

    m_pStatusStopButton = new QPushButton(this);
    m_pStatusStopButton->setMaximumSize(14, 14);
    m_pStatusStopButton->setToolTip(tr("Stop"));
    m_pStatusStopButton->setAccessibleName(tr("Stop"));
    m_pStatusStopButton->setStyleSheet(QStringLiteral(
        "QPushButton{min-height: 10px;min-width: 10px; border-image: url(:/images/img_Stop.png)}"
        "QPushButton:hover { border-image: url(:/images/img_StopClick.png)}"
        "QPushButton:pressed { border-image: url(:/images/img_HoverStop.png);}"
        "QPushButton:disabled { border-image: url(:/images/img_StopClick.png);}"));
    bar->addPermanentWidget(m_pStatusStopButton, 1);
    hideStatusProgress();
}

void QConverterMainWindow::closeEvent(QCloseEvent *event)
{
    event->ignore();
    const bool saving = IsPreview && pMailSaving->isRunning();
    if (bProcessRunning || saving) {
        if (m_pProgressInfo)
            m_pProgressInfo->show();
        QMessageBox::warning(this, QLatin1String(boxTitle),
                             tr("Application Running !!\nPlease halt the current process to Exit."));
        return;
    }
    if (closeevent == 0) {
        if (QMessageBox::warning(this, QLatin1String(boxTitle),
                                 tr("\nDo you want to close Velmora Mail Converter? "),
                                 QMessageBox::Yes | QMessageBox::No, QMessageBox::No) != QMessageBox::Yes)
            return;
        ++closeevent;
    }
    if (m_pProgressInfo)
        m_pProgressInfo->hide(); // it closes by no other way, and the program ends with its last window
    event->accept();
}
