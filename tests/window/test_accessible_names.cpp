#include "window_robot.h"

#include "dialogs/about_dialog.h"
#include "dialogs/preferences_dialog.h"

#include <QAccessible>
#include <QProgressBar>

// What a screen reader says of each control, and where the keyboard goes.
class TestAccessibleNames : public QObject
{
    Q_OBJECT

private slots:
    void names();
    void tabOrder_data();
    void tabOrder();
};

static QString nameOf(QWidget *widget)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
    return interface ? interface->text(QAccessible::Name) : QString();
}

// The controls of the window and its dialogs, hidden ones too, that have no name; the toolkit's own are left out.
static QStringList nameless(QWidget *window)
{
    QStringList found;
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        const bool control = widget->focusPolicy() != Qt::NoFocus || qobject_cast<QProgressBar *>(widget);
        const bool inner = widget->objectName().startsWith("qt_") || qobject_cast<QMenuBar *>(widget) ||
                           widget->metaObject()->className() == QByteArray("QToolBarExtension");
        if (control && !inner && nameOf(widget).isEmpty())
            found.append(widget->metaObject()->className() + (' ' + widget->objectName()));
    }
    return found;
}

void TestAccessibleNames::names()
{
    strPlistPath = qEnvironmentVariable("VELMORA_SOURCE") + "/resources/MailConverterLink.plist";
    WindowRobot robot;
    emit pMessageSavingThread->OnShowProgressDlg();
    pMessageSavingThread->m_mailClientIndex = 3;
    const SaveAsWindow target(robot.window);
    QCOMPARE(nameless(robot.window).join(", "), QString());
}

void TestAccessibleNames::tabOrder_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QStringList>("order");
    QTest::newRow("selection") << "BrowseWindow"
                               << QStringList{"comboBoxForClientList", "textEdit_FileSelected",
                                              "browseConverterButton", "StartButton", "closeButton"};
    QTest::newRow("preferences") << "PreferencesDlg"
                                 << QStringList{"CheckForUpdateCheckBox", "comboBoxUpdates",
                                                "CheckUpdateButton", "OkButton", "CancelButton"};
    QTest::newRow("closing") << "ImportMsgDlg" << QStringList{"ImportLabel", "ImportLabel_2", "OKButton"};
    QTest::newRow("about") << "AboutDialog" << QStringList{"TicketLabel", "OKButton"};
}

// From the last control by the Tab key, once around.
void TestAccessibleNames::tabOrder()
{
    QFETCH(QString, dialog);
    QFETCH(QStringList, order);
    strPlistPath = qEnvironmentVariable("VELMORA_SOURCE") + "/resources/MailConverterLink.plist";
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
}

QTEST_MAIN(TestAccessibleNames)
#include "test_accessible_names.moc"
