#include "app/window/main_window.h"

#include "app/shared_state.h"
#include "app/window/my_button.h"
#include "app/window/window_state.h"
#include "dialogs/import_window_dialog.h"
#include "save/mail_saving.h"
#include "scan/message_saving_thread.h"
#include "scan/window/parse_database_dialog.h"
#include "scan/window/store_drop.h"

#include <QPushButton>
#include <QTreeWidget>

void QConverterMainWindow::ConnectSignals()
{
    m_pParseDatabase = new QParseDatabase(this);
    takeDroppedStores(this, [this](const QString &path) { takeDroppedStore(path); });
    m_pImportWindow = new QImportWindow(this);
    bParseDatabase = true;
    m_pMySaveButton->setEnabled(false);
    m_pMyOpenButton->setEnabled(false);
    pMessageSavingThread = new QMessageSavingThread;
    pMailSaving = new QMailSaving;
    pMailSaving->m_toDisk = true;

    using Window = QConverterMainWindow;
    connect(m_pStatusStopButton, &QPushButton::clicked, this, &Window::OnStopPushButton);
    connect(m_pMessageList, &QTreeWidget::itemSelectionChanged, this, &Window::OnMessageSubjectKey);
    connect(m_pFolderTree, &QTreeWidget::itemClicked, this, &Window::ShowindivisualMailItemsInfo);
    connect(m_pFolderTree, &QTreeWidget::itemChanged, this, &Window::onFolderItemChanged);
    connectScanThread();
    connectSaveThread();
}

void QConverterMainWindow::connectScanThread()
{
    using Window = QConverterMainWindow;
    using Scan = QMessageSavingThread;
    const auto *scan = pMessageSavingThread;
    connect(scan, &Scan::MakeTreeWidget, this, &Window::OnMakeTreeWidget);
    connect(scan, &Scan::OnIndivisibleProgressvalue, this, &Window::SetIndivisibleProgress);
    connect(scan, &Scan::OnShowProgressDlg, this, &Window::ShowProgressDlg);
    connect(scan, &Scan::OnSubProgressvalue, this, &Window::SetSubProgress);
    connect(scan, &Scan::OnSubProgressHide, this, &Window::SetProgressHide);
    connect(scan, &Scan::FinishScaning, this, &Window::HideProgressBar);
    connect(scan, &Scan::NoDataIntoFile, this, &Window::OnNoDataIntoFile);
    connect(scan, &QThread::finished, this, &Window::onWorkerEnded);
}

void QConverterMainWindow::connectSaveThread()
{
    using Window = QConverterMainWindow;
    using Save = QMailSaving;
    const auto *save = pMailSaving;
    connect(save, &Save::OnShowProgressDlg, this, &Window::ShowProgressDlg);
    connect(save, &Save::OnSubProgressHide, this, &Window::SetProgressHide);
    connect(save, &Save::OnIndivisibleProgressvalue, this, &Window::SetIndivisibleProgress);
    connect(save, &Save::OnSubProgressvalue, this, &Window::SetSubProgress);
    connect(save, &Save::FinishSaving, this, &Window::HideProgressBar);
    connect(save, &QThread::finished, this, &Window::onWorkerEnded);
}
