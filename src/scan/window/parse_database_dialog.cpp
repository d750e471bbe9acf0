#include "scan/window/parse_database_dialog.h"

#include "app/shared_state.h"
#include "app/window/main_window.h"
#include "app/window/window_state.h"
#include "platform/user_name.h"
#include "platform/window/text_fit.h"
#include "scan/default_location.h"
#include "scan/message_saving_thread.h"
#include "scan/store_kinds.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>

namespace
{
const StoreKind &kindAt(int index)
{
    const StoreKind *kind = findStoreKind(index);
    return kind ? *kind : storeKinds().front();
}
} // namespace

QParseDatabase::QParseDatabase(QWidget *parent) : QWidget(parent, Qt::Sheet)
{
    bProcessRunning = false;
    setupUi(this);
    fitToText(closeButton);
    textEdit_FileSelected->resize(textEdit_FileSelected->width() - fitToText(browseConverterButton),
                                  textEdit_FileSelected->height());
    for (const StoreKind &kind : storeKinds())
        comboBoxForClientList->addItem(QLatin1String(kind.label));
    comboBoxForClientList->setMaxVisibleItems(comboBoxForClientList->count());
    ConnectSignals();
}

void QParseDatabase::ConnectSignals()
{
    pConverterWin = pMainWindow;
    connect(comboBoxForClientList, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &QParseDatabase::ChangeSourceLineEdit);
    connect(browseConverterButton, &QPushButton::clicked, this, &QParseDatabase::SourceLocationOfFile);
    connect(StartButton, &QPushButton::clicked, this, &QParseDatabase::StartFormatConversion);
    connect(closeButton, &QPushButton::clicked, this, QOverload<>::of(&QParseDatabase::closeEvent));
}

void QParseDatabase::showSelectedFile()
{
    textEdit_FileSelected->setText(m_selectedFile);
    textEdit_FileSelected->setToolTip(m_selectedFile);
}

// A client without a default location keeps what is selected.
void QParseDatabase::fillDefaultLocation()
{
    globalVarForCurrentIndex = comboBoxForClientList->currentIndex();
    const StoreKind &kind = kindAt(globalVarForCurrentIndex);
    if (kind.defaultLocation)
        m_selectedFile = defaultLocation(kind, loginName());
    showSelectedFile();
}

// What is shown and what would be scanned always agree: where nothing is filled in, nothing is selected.
void QParseDatabase::ChangeSourceLineEdit(int index)
{
    m_selectedFile.clear();
    showSelectedFile();
    if (kindAt(index).defaultLocation)
        fillDefaultLocation();
    pMessageSavingThread->m_mailClientIndex = index;
}

void QParseDatabase::SourceLocationOfFile()
{
    globalVarForCurrentIndex = comboBoxForClientList->currentIndex();
    switch (kindAt(globalVarForCurrentIndex).browse) {
    case BrowseFor::Nothing:
        OpenFileDialogForSelectMailClient();
        break;
    case BrowseFor::Folder:
        browseForFolder();
        break;
    case BrowseFor::File:
        browseForFile();
        break;
    }
}

void QParseDatabase::OpenFileDialogForSelectMailClient()
{
    m_selectedFile.clear();
    showSelectedFile();
    QMessageBox::information(this, tr("VelmoraMailConverter"), tr("\nChoose a mail client."));
}

// A dialog that is left without a choice brings the client's default location back.
void QParseDatabase::browseForFolder()
{
    m_selectedFile =
        QFileDialog::getExistingDirectory(this, tr("Open Directory"), QStringLiteral("/"),
                                          QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
    if (m_selectedFile.isEmpty())
        fillDefaultLocation();
    else
        showSelectedFile();
}

void QParseDatabase::browseForFile()
{
    m_selectedFile = QFileDialog::getOpenFileName(this, tr("All Files"));
    if (!m_selectedFile.isEmpty())
        showSelectedFile();
}

void QParseDatabase::StartFormatConversion()
{
    if (comboBoxForClientList->currentIndex() == 0) {
        QMessageBox::information(this, tr("VelmoraMailConverter"), tr("\nChoose a mail client."));
        return;
    }
    if (m_selectedFile.isEmpty()) {
        QMessageBox::information(this, tr("VelmoraMailConverter"),
                                 tr("\nSelect mailbox database for conversion."));
        return;
    }
    // A scan that was stopped may still be on its way to its end; it must not swallow this start.
    pConverterWin->letWorkersEnd();
    pConverterWin->beginRun();
    pMessageSavingThread->SetInitialSettings();
    hide();
}

void QParseDatabase::closeEvent()
{
    hide();
    bParseDatabase = false;
    bParseDatabaseClose = true;
    m_selectedFile = QStringLiteral(" ");
    pConverterWin->onSelectionClosed();
}

void QParseDatabase::closeEvent(QCloseEvent *event)
{
    event->ignore();
    closeEvent();
}

void QParseDatabase::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        closeEvent();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        auto *focused = qobject_cast<QPushButton *>(focusWidget());
        (focused ? focused : browseConverterButton)->click();
    } else {
        QWidget::keyPressEvent(event);
    }
}
