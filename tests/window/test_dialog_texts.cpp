#include "window_robot.h"

#include "app/window/translations.h"
#include "dialogs/about_dialog.h"
#include "dialogs/preferences_dialog.h"

#include <QAccessible>
#include <QProgressBar>
#include <QTranslator>

// What the dialogs say: whether it fits, what a screen reader makes of it, and where the keyboard goes.
class TestDialogTexts : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        strPlistPath = qEnvironmentVariable("VELMORA_SOURCE") + "/resources/MailConverterLink.plist";
    }
    void cleanup() { qDeleteAll(qApp->findChildren<QTranslator *>()); }

    void names()
    {
        WindowRobot robot;
        emit pMessageSavingThread->OnShowProgressDlg();
        pMessageSavingThread->m_mailClientIndex = 3;
        const SaveAsWindow target(robot.window);
        QCOMPARE(nameless(robot.window), QStringList());
    }

    // A help link without a text takes no place.
    void emptyLinks()
    {
        for (const bool hasTexts : {true, false}) {
            strPlistPath = hasTexts ? strPlistPath : QString();
            WindowRobot robot;
            for (const char *link : {"ImportLabel", "ImportLabel_2"})
                QCOMPARE(!robot.window->findChild<QLabel *>(link)->isHidden(), hasTexts);
        }
    }

    // From the last control by the Tab key, once around.
    void tabOrder_data()
    {
        const DataTable row([](const QString &dialog, const QStringList &order) {
            WindowRobot robot;
            auto *widget = robot.window->findChild<QWidget *>(dialog);
            QVERIFY(widget);
            if (auto *box = widget->findChild<QCheckBox *>())
                box->setChecked(true);
            widget->show();
            QVERIFY(QTest::qWaitForWindowExposed(widget));
            QApplication::setActiveWindow(widget);
            widget->findChild<QWidget *>(order.last())->setFocus();
            QStringList visited;
            for (int presses = 0; presses < 2 * order.size() && visited.size() < order.size(); ++presses) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                const QString name = QApplication::focusWidget()->objectName();
                if (visited.isEmpty() || visited.last() != name) // a label stops once more, at its link
                    visited.append(name);
            }
            QCOMPARE(visited, order);
        });
        row("selection", "BrowseWindow",
            {"comboBoxForClientList", "textEdit_FileSelected", "browseConverterButton", "StartButton",
             "closeButton"});
        row("closing", "ImportMsgDlg", {"ImportLabel", "ImportLabel_2", "OKButton"});
        row("about", "AboutDialog", {"TicketLabel", "OKButton"});
    }

    void tabOrder() { checkRow(); }

    // The dialogs have fixed sizes: their texts must fit with other fonts and in each language all the same.
    void fit_data()
    {
        const DataTable row([](QLocale::Language language, int points) {
            QLocale::setDefault(language);
            installTranslations(qApp);
            QApplication::setFont(QFont("DejaVu Sans", points));

            WindowRobot robot;
            pMessageSavingThread->m_mailClientIndex = 3;
            auto *target = new SaveAsWindow(robot.window);
            auto *preferences = robot.window->findChild<PreferencesDialog *>();
            auto *about = robot.window->findChild<AboutDlg *>();
            QCOMPARE(preferences->findChild<QPushButton *>("CancelButton")->text(),
                     language == QLocale::German ? "Abbrechen" : "Cancel");
            const QMap<QWidget *, QSize> sizes{{preferences, {462, 166}},
                                               {about, {524, 295}},
                                               {target, {350, 150}},
                                               {m_pParseDatabase, {477, 243}},
                                               {robot.importWindow(), {467, 208}}}; // with its numbers
            QVERIFY2(cutTexts(robot.window).isEmpty(), qPrintable(cutTexts(robot.window).join(' ')));
            robot.importWindow()->showReport({}, {});
            for (QWidget *dialog : sizes.keys()) {
                dialog->show();
                QVERIFY2(cutTexts(dialog).isEmpty(), qPrintable(cutTexts(dialog).join(' ')));
                QCOMPARE(dialog->size(), sizes[dialog]);
            }
        });
        for (const int points : {9, 12, 15}) {
            row("English " + QByteArray::number(points), QLocale::English, points);
            row("German " + QByteArray::number(points), QLocale::German, points);
        }
    }

    void fit() { checkRow(); }

private:
    // The controls of the window and its dialogs, hidden ones too, that have no name; not the toolkit's own.
    static QStringList nameless(QWidget *window)
    {
        QStringList found;
        for (QWidget *widget : window->findChildren<QWidget *>()) {
            const bool control = widget->focusPolicy() != Qt::NoFocus || qobject_cast<QProgressBar *>(widget);
            const bool inner = widget->objectName().startsWith("qt_") || qobject_cast<QMenuBar *>(widget) ||
                               widget->metaObject()->className() == QByteArray("QToolBarExtension");
            QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
            if (control && !inner && (!interface || interface->text(QAccessible::Name).isEmpty()))
                found.append(widget->metaObject()->className() + (' ' + widget->objectName()));
        }
        return found;
    }

    // Each label and button of the dialog whose text is cut off.
    static QStringList cutTexts(const QWidget *dialog)
    {
        QStringList cut;
        for (const QWidget *widget : dialog->findChildren<QWidget *>()) {
            const auto *label = qobject_cast<const QLabel *>(widget);
            const auto *button = qobject_cast<const QAbstractButton *>(widget);
            const QString text = label ? label->text() : button ? button->text() : QString();
            if (!widget->isVisible() || text.isEmpty())
                continue;
            const bool wraps = label && label->wordWrap();
            QSize needed(wraps ? 0 : widget->sizeHint().width(),
                         wraps ? label->heightForWidth(widget->width()) : widget->fontMetrics().height());
            if (qobject_cast<const QPushButton *>(widget)) // whose hint has much air in it
                needed.setWidth(widget->fontMetrics().horizontalAdvance(text) + 6);
            if (needed.width() > widget->width() || needed.height() > widget->height())
                cut.append(widget->objectName());
        }
        return cut;
    }
};

QTEST_MAIN(TestDialogTexts)
#include "test_dialog_texts.moc"
