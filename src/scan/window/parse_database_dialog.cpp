#include "scan/window/parse_database_dialog.h"

#include "app/shared_state.h"
#include "app/window/main_window.h"
#include "app/window/window_state.h"
#include "platform/user_name.h"
#include "platform/window/text_fit.h"
#include "scan/default_location.h"
#include "scan/find_stores.h"
#include "scan/message_saving_thread.h"
#include "scan/store_kinds.h"
#include "scan/window/store_drop.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMessageBox>
#include <QUrl>

#include <algorithm>
#include <iterator>

namespace
{
constexpr int archiveClient = 5; ///< the client whose store is an .olm file

// The toolkit's side bar with the client's places on this system, the user's home and the disks. Stores lie in hidden
// folders more often than not.
void showUsualPlaces(QFileDialog *dialog, const StoreKind &kind)
{
    QList<QUrl> places;
    const QStringList paths =
        usualPlaces(kind, QDir::homePath()) + QStringList{QDir::homePath(), QDir::rootPath()};
    for (const QString &place : paths)
        places.append(QUrl::fromLocalFile(place));
    dialog->setSidebarUrls(places);
    dialog->setFilter(dialog->filter() | QDir::Hidden);
}

QString chosenIn(QFileDialog *dialog)
{
    return dialog->exec() == QDialog::Accepted ? dialog->selectedFiles().value(0) : QString();
}

const StoreKind &kindAt(int index)
{
    const StoreKind *kind = findStoreKind(index);
    return kind ? *kind : storeKinds[0];
}

// The largest store below a folder, unless the look would hold the window up: then client 0.
FoundStore storeBelow(const QString &folder)
{
    constexpr qint64 longestLook = 150; // milliseconds
    QElapsedTimer timer;
    timer.start();
    const auto isOver = [&timer] { return timer.elapsed() > longestLook; };
    const FoundStores found = findStores({folder}, isOver);
    const FoundStore *largest = largestStore(found);
    return largest && !isOver() ? *largest : FoundStore();
}
} // namespace

// What the dialog does for a kind of store: how it shows the client's default location, and what Browse opens.
struct QParseDatabase::StoreRow {
    const StoreScan *store;
    void (QParseDatabase::*showDefaultLocation)();
    void (QParseDatabase::*browse)();
};

const QParseDatabase::StoreRow &QParseDatabase::rowOf(const StoreKind &kind)
{
    using This = QParseDatabase;
    // clang-format off
    static constexpr StoreRow rows[] = {
        {&mboxStore,      &This::DefaultDatabaseLocationforMbox,       &This::OpenFileDialogforMbox},
        {&emlxStore,      &This::DefaultDatabaseLocation,              &This::OpenFileDialog},
        {&mailMateStore,  &This::DefaultDatabaseLocationforEml,        &This::OpenFileDialogforEml},
        {&outspringStore, &This::DefaultDatabaseLocationforEmlandfEml, &This::OpenFileDialogforEmlandfEml},
        {&operaStore,     &This::DefaultDatabaseLocationforMbs,        &This::OpenFileDialogforMbs},
        {&olmStore,       &This::showSelectedFile,                     &This::browseForFile},
        {nullptr,         &This::showSelectedFile,                     &This::OpenFileDialogForSelectMailClient},
    };
    // clang-format on
    return *std::find_if(std::begin(rows), std::end(rows) - 1,
                         [&kind](const StoreRow &row) { return row.store == kind.store; });
}

QParseDatabase::QParseDatabase(QWidget *parent) : QWidget(parent, Qt::Sheet)
{
    bProcessRunning = false;
    setupUi(this);
    fitToText(closeButton);
    textEdit_FileSelected->resize(textEdit_FileSelected->width() - fitToText(browseConverterButton),
                                  textEdit_FileSelected->height());
    for (const StoreKind &kind : storeKinds)
        comboBoxForClientList->addItem(QCoreApplication::translate("BrowseWindow", kind.label));
    comboBoxForClientList->setMaxVisibleItems(comboBoxForClientList->count());
    label_4->installEventFilter(this);
    takeDroppedStores(this, [this](const QString &path) { chooseStore(path); });
    ConnectSignals();
}

bool QParseDatabase::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == label_4 && event->type() == QEvent::MouseButtonRelease)
        StartButton->click();
    return QWidget::eventFilter(watched, event);
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

// Where the client has no default location, nothing is selected.
void QParseDatabase::ChangeSourceLineEdit(int index)
{
    m_selectedFile.clear();
    showSelectedFile();
    const StoreKind &kind = kindAt(index);
    if (kind.defaultLocation)
        (this->*rowOf(kind).showDefaultLocation)();
    if (!m_dropped.isEmpty() && kind.store && kind.store != &olmStore) {
        m_selectedFile = m_dropped; // a folder dropped before its client was chosen
        m_dropped.clear();
        showSelectedFile();
    }
    pMessageSavingThread->m_mailClientIndex = index;
}

void QParseDatabase::SourceLocationOfFile()
{
    globalVarForCurrentIndex = comboBoxForClientList->currentIndex();
    (this->*rowOf(kindAt(globalVarForCurrentIndex)).browse)();
}

void QParseDatabase::OpenFileDialogForSelectMailClient()
{
    m_selectedFile.clear();
    showSelectedFile();
    QMessageBox::information(this, tr("VelmoraMailConverter"), tr("\nChoose a mail client."));
}

// Left without a choice, the client's default location comes back.
void QParseDatabase::browseForFolder()
{
    QFileDialog dialog(this, tr("Open Directory"), QStringLiteral("/"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOptions(QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
    showUsualPlaces(&dialog, kindAt(globalVarForCurrentIndex));
    m_selectedFile = chosenIn(&dialog);
    if (m_selectedFile.isEmpty())
        fillDefaultLocation();
    else
        showChosen();
}

// Left without a choice, the line goes on showing the file that was chosen before, though it is selected no more.
void QParseDatabase::browseForFile()
{
    QFileDialog dialog(this, tr("All Files"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    showUsualPlaces(&dialog, kindAt(globalVarForCurrentIndex));
    m_selectedFile = chosenIn(&dialog);
    if (!m_selectedFile.isEmpty())
        showChosen();
}

// What comes next is Start.
void QParseDatabase::showChosen()
{
    showSelectedFile();
    StartButton->setFocus();
}

void QParseDatabase::chooseStore(const QString &path)
{
    FoundStore store{archiveClient, path};
    if (!QFileInfo(path).isFile())
        store = storeBelow(path);
    const int client = comboBoxForClientList->currentIndex();
    const bool fits =
        store.client == 0 ? client != archiveClient : kindAt(client).store == kindAt(store.client).store;
    if (!fits)
        comboBoxForClientList->setCurrentIndex(store.client);
    globalVarForCurrentIndex = comboBoxForClientList->currentIndex();
    m_selectedFile = fits || store.client == 0 ? path : store.path;
    showChosen();
    if (globalVarForCurrentIndex != 0)
        return;
    m_dropped = path;
    comboBoxForClientList->setFocus();
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
