#include "app/window/main_window.h"

#include "app/shared_state.h"
#include "app/window/my_button.h"
#include "app/window/window_state.h"
#include "browse/window/mail_view.h"
#include "browse/window/row_item.h"
#include "dialogs/progress_info_dialog.h"
#include "save/window/save_as_dialog.h"
#include "scan/message_saving_thread.h"
#include "scan/window/parse_database_dialog.h"

#include <QAction>
#include <QLabel>
#include <QMessageBox>
#include <QTextBrowser>
#include <QTreeWidget>

namespace
{
const QPoint selectionPlace(200, 220); ///< of the selection dialog, inside the main window
}

void QConverterMainWindow::takeDroppedStore(const QString &path)
{
    if (!m_pParseDatabase->isVisible())
        OnOpenFile();
    if (m_pParseDatabase->isVisible())
        m_pParseDatabase->chooseStore(path);
}

void QConverterMainWindow::ShowParseWindow()
{
    m_pParseDatabase->move(mapToGlobal(selectionPlace));
    m_pParseDatabase->show();
    m_pParseDatabase->activateWindow();
}

void QConverterMainWindow::onSelectionClosed()
{
    m_pMySaveButton->setEnabled(false);
    m_pMyOpenButton->setEnabled(true);
    enablePreferences();
}

void QConverterMainWindow::OnOpenFile()
{
    if (workerIsBusy())
        return;
    m_pMyOpenButton->setIcon(QIcon(QStringLiteral(":/images/img_Open.png")));
    if (!bParseDatabase)
        bStopFlag = false;
    if (bParseDatabaseClose)
        openSelectionDialog();
    if (bParseDatabase) {
        discardView();
        ShowParseWindow();
        return;
    }
    const QString question =
        tr("Current scan information will be discarded if you select another mailbox. Do "
           "you want to continue?");
    if (QMessageBox::warning(this, tr("VelmoraMailConverter"), question, QMessageBox::Yes | QMessageBox::No,
                             QMessageBox::No) != QMessageBox::Yes)
        return;
    bParseDatabase = false;
    discardView();
    openSelectionDialog();
    ShowParseWindow();
}

// Nothing of the last scan stays on screen, nor in the records that a save goes by. What a run that ended early has
// left open goes too.
void QConverterMainWindow::discardView()
{
    IsPreview = false;
    if (m_pProgressInfo)
        m_pProgressInfo->hide();
    if (m_pSaveAs)
        m_pSaveAs->hide();
    m_folderItems.clear();
    m_pFolderTree->clear();
    emptyRows(m_pMessageList);
    discardScanResult();
    clearPreview();
    m_pFolderNameLabel->clear();
    m_pCountLabel->clear();
    m_pOpenAction->setEnabled(true);
    m_pMySaveButton->setEnabled(false);
    m_pSaveAction->setEnabled(false);
    m_pMyOpenButton->setEnabled(!bParseDatabase);
}

void QConverterMainWindow::openSelectionDialog()
{
    bParseDatabase = true;
    delete m_pParseDatabase;
    m_pParseDatabase = new QParseDatabase(this);
    m_pMySaveButton->setEnabled(false);
    m_pMyOpenButton->setEnabled(false);
    pMessageSavingThread->m_mailClientIndex = 0;
    m_selectedFile.clear();
}
