#pragma once

// Drives the real window as a user does: clicks, and answers to the boxes and dialogs that come up, told in advance
// in the order in which they are to come.

#include "data_table.h"
#include "store_files.h"

#include "app/shared_state.h"
#include "app/window/main_window.h"
#include "app/window/my_button.h"
#include "app/window/window_state.h"
#include "dialogs/import_window_dialog.h"
#include "dialogs/progress_info_dialog.h"
#include "platform/window/text_fit.h"
#include "save/mail_saving.h"
#include "save/window/save_as_dialog.h"
#include "scan/message_saving_thread.h"
#include "scan/window/parse_database_dialog.h"

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSemaphore>
#include <QTextBrowser>
#include <QTreeWidget>

#include <memory>

const char discardQuestion[] =
    "Current scan information will be discarded if you select another mailbox. Do you want "
    "to continue?";
const char scanDone[] = "\nMailbox scan completed successfully.";

class WindowRobot
{
public:
    WindowRobot()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        setFontFallback();
        // A program starts with these; a test that ended in the middle of a run leaves them.
        closeevent = 0;
        IsPreview = false;
        bParseDatabaseClose = false;
        window = new QConverterMainWindow;
        pConverterWin = window;
        window->setMinimumSize(900, 640);
        window->show();
        window->ShowParseWindow();
        QObject::connect(&m_timer, &QTimer::timeout, [this] { answerNext(); });
        m_timer.start(5);
    }
    ~WindowRobot()
    {
        delete window;
        discardScanResult();
    }

    /// The next box has this text and is answered with this button.
    void expectBox(const QString &text, QMessageBox::StandardButton button)
    {
        m_answers.append({text, button, QString()});
    }
    /// Next comes a file dialog, which gets this path; "" leaves it without a choice.
    void expectFileDialog(const QString &path) { m_answers.append({"", QMessageBox::NoButton, path}); }
    /// From now on the answers are given by the keyboard.
    void useKeys() { m_byKeys = true; }
    /// Presses Tab until the control has the focus, as it must within its window; then the key.
    static void pressKeyOn(QWidget *widget, Qt::Key key)
    {
        QApplication::setActiveWindow(widget->window());
        for (int presses = 0; presses < 40 && QApplication::focusWidget() != widget; ++presses)
            QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : widget->window(),
                            Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), widget);
        QTest::keyClick(widget, key);
    }
    /// True if all that was expected has come, and nothing else.
    bool isQuiet() const { return m_answers.isEmpty() && m_surprises.isEmpty(); }
    QString surprises() const { return m_surprises.join(" | "); }

    template <typename T>
    T *in(QWidget *parent, const char *name) const
    {
        return parent->findChild<T *>(name);
    }
    QTreeWidget *tree() const { return in<QTreeWidget>(window, "folderTree"); }
    QTreeWidget *list() const { return in<QTreeWidget>(window, "messageList"); }
    QString header() const { return in<QTextBrowser>(window, "headerPane")->toPlainText(); }
    QComboBox *clientBox() const { return in<QComboBox>(m_pParseDatabase, "comboBoxForClientList"); }
    QString statusName() const { return in<QLabel>(window, "folderNameLabel")->text(); }
    QString statusCount() const { return in<QLabel>(window, "countLabel")->text(); }
    QImportWindow *importWindow() const { return window->findChild<QImportWindow *>(); }
    QString closingText() const { return in<QLabel>(importWindow(), "InfoLabels")->text(); }
    /// The dialog of the run that is on, or null.
    QProgressInfo *progress() const
    {
        for (QProgressInfo *dialog : window->findChildren<QProgressInfo *>())
            if (dialog->isVisible())
                return dialog;
        return nullptr;
    }
    bool canOpenAndSave() const
    {
        return m_pMyOpenButton->isEnabled() && m_pMySaveButton->isEnabled() && fileAction(1)->isEnabled();
    }
    /// The action of the File menu at this place.
    QAction *fileAction(int place) const
    {
        return window->menuBar()->actions().at(1)->menu()->actions().at(place);
    }

    static void click(QWidget *widget) { QTest::mouseClick(widget, Qt::LeftButton); }
    void click(QWidget *parent, const char *name) const { click(in<QPushButton>(parent, name)); }

    /// Chooses a client in the selection dialog and gives it this store by the Browse button.
    void choose(int client, const QString &store)
    {
        clientBox()->setCurrentIndex(client);
        expectFileDialog(store);
        click(m_pParseDatabase, "browseConverterButton");
    }
    void start() { click(m_pParseDatabase, "StartButton"); }
    /// Scans a store to its end; a Thunderbird profile, if no other client is named.
    void scan(const QString &store, int client = 3)
    {
        choose(client, store);
        expectBox(scanDone, QMessageBox::Ok);
        start();
        QTRY_VERIFY2(isQuiet(), qPrintable(surprises()));
        QTRY_VERIFY(!pMessageSavingThread->isRunning());
        QTRY_VERIFY(tree()->topLevelItemCount() == 1);
        settle();
    }
    /// Lets what the workers have said arrive.
    static void settle()
    {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }

    /// The item of a folder, by the names shown on the way to it, root not counted.
    QTreeWidgetItem *folder(const QString &way) const
    {
        QTreeWidgetItem *item = tree()->topLevelItem(0);
        for (const QString &name : way.split('/', Qt::SkipEmptyParts)) {
            QTreeWidgetItem *next = nullptr;
            for (int i = 0; item && i < item->childCount(); ++i)
                if (item->child(i)->text(0) == name)
                    next = item->child(i);
            item = next;
        }
        return item;
    }
    void clickFolder(const QString &way) const { clickItem(folder(way)); }
    void clickItem(QTreeWidgetItem *item) const
    {
        tree()->scrollToItem(item);
        const QRect place = tree()->visualItemRect(item);
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {},
                          QPoint(place.left() + 60, place.center().y()));
    }
    /// Clicks the folder's box.
    void tick(const QString &way) const
    {
        QTreeWidgetItem *item = folder(way);
        tree()->scrollToItem(item);
        QStyleOptionViewItem option;
        option.initFrom(tree());
        option.rect = tree()->visualItemRect(item);
        option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDecoration |
                          QStyleOptionViewItem::HasDisplay;
        option.widget = tree();
        const QRect box =
            tree()->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, tree());
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, box.center());
    }

    /// Goes from Save to the start of the save thread.
    void save(const char *target, const QString &folder)
    {
        click(m_pMySaveButton);
        in<QRadioButton>(m_pSaveAs, target)->click();
        expectFileDialog(folder);
        click(m_pSaveAs, "Ok_Button");
    }

    QConverterMainWindow *window;

private:
    struct Answer {
        QString text;
        QMessageBox::StandardButton button;
        QString path;
    };

    void answerNext()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (auto *box = qobject_cast<QMessageBox *>(modal)) {
            if (m_answers.isEmpty() || m_answers.first().text != box->text()) {
                m_surprises.append("box: " + box->text());
                return box->reject();
            }
            const Answer answer = m_answers.takeFirst();
            if (m_byKeys)
                pressKeyOn(box->button(answer.button), Qt::Key_Space);
            else
                click(box->button(answer.button));
        } else if (auto *dialog = qobject_cast<QFileDialog *>(modal)) {
            if (m_answers.isEmpty() || m_answers.first().button != QMessageBox::NoButton) {
                m_surprises.append("file dialog");
                return dialog->reject();
            }
            const QString path = m_answers.takeFirst().path;
            if (path.isEmpty())
                return dialog->reject();
            in<QLineEdit>(dialog, "fileNameEdit")->setText(path);
            if (m_byKeys)
                return QTest::keyClick(in<QLineEdit>(dialog, "fileNameEdit"), Qt::Key_Return);
            click(in<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Open));
        }
    }

    bool m_byKeys = false;
    QTimer m_timer;
    QList<Answer> m_answers;
    QStringList m_surprises;
};

/// Holds a worker at a signal that it sends, until it is let go: a direct connection runs in the worker's thread.
class WorkerGate
{
public:
    /// Holds it at the first progress of this many per cent or more.
    template <typename Worker>
    WorkerGate(Worker *worker, double from)
    {
        QObject::connect(
            worker, &Worker::OnIndivisibleProgressvalue, worker,
            [state = m_state, from](double percent) {
                if (percent < from || state->open)
                    return;
                state->holding = true;
                state->gate.acquire();
            },
            Qt::DirectConnection);
    }
    ~WorkerGate() { open(); }
    bool isHolding() const { return m_state->holding; }
    void open()
    {
        m_state->open = true;
        m_state->gate.release();
    }

private:
    struct State {
        QSemaphore gate;
        std::atomic<bool> holding{false};
        std::atomic<bool> open{false};
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};
