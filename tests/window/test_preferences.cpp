#include "dialogs/preferences_dialog.h"

#include <QMessageBox>
#include <QSettings>
#include <QTimer>
#include <QtTest>

class TestPreferences : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void read_data();
    void read();
    void store();
    void cancel_data();
    void cancel();
    void checkNow();
    void drag();
    void keyboard();

private:
    QSettings m_settings{"velmora", "ConverterPreferences"};
};

// A dialog's widgets by the names of its form.
struct Widgets {
    explicit Widgets(const PreferencesDialog &dialog)
        : box(dialog.findChild<QCheckBox *>("CheckForUpdateCheckBox")),
          interval(dialog.findChild<QComboBox *>("comboBoxUpdates")),
          now(dialog.findChild<QPushButton *>("CheckUpdateButton")),
          ok(dialog.findChild<QPushButton *>("OkButton")),
          cancel(dialog.findChild<QPushButton *>("CancelButton"))
    {
    }
    QCheckBox *box;
    QComboBox *interval;
    QPushButton *now, *ok, *cancel;
};

void TestPreferences::init()
{
    QVERIFY2(m_settings.fileName().startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")), "not the user's own");
    m_settings.clear();
    m_settings.sync();
}

void TestPreferences::read_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("storedInterval");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<QString>("interval");
    QTest::newRow("nothing stored") << QVariant() << QString() << false << "Daily";
    QTest::newRow("off: the interval isn't read") << QVariant(false) << "Monthly" << false << "Daily";
    QTest::newRow("on, no interval") << QVariant(true) << QString() << true << "Daily";
    QTest::newRow("weekly") << QVariant(true) << "Weekly" << true << "Weekly";
    QTest::newRow("monthly") << QVariant(true) << "Monthly" << true << "Monthly";
    QTest::newRow("unknown interval") << QVariant(true) << "Yearly" << true << "Daily";
    QTest::newRow("other letter case") << QVariant(true) << "weekly" << true << "Daily";
}

void TestPreferences::read()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, storedInterval);
    if (stored.isValid())
        m_settings.setValue("CheckForUpdate", stored);
    if (!storedInterval.isNull())
        m_settings.setValue("UpdateInterval", storedInterval);
    m_settings.sync();

    const PreferencesDialog dialog;
    const Widgets widgets(dialog);
    QTEST(widgets.box->isChecked(), "checked");
    QTEST(widgets.interval->isEnabled(), "checked");
    QTEST(widgets.interval->currentText(), "interval");
}

void TestPreferences::store()
{
    PreferencesDialog dialog;
    const Widgets widgets(dialog);
    dialog.show();
    QTest::mouseClick(widgets.box, Qt::LeftButton, {}, QPoint(8, widgets.box->height() / 2));
    QVERIFY(widgets.interval->isEnabled());
    widgets.interval->setCurrentText("Monthly");
    QTest::mouseClick(widgets.ok, Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(!dialog.isVisible());
    m_settings.sync();
    QCOMPARE(m_settings.value("CheckForUpdate").toBool(), true);
    QCOMPARE(m_settings.value("UpdateInterval").toString(), "Monthly");

    dialog.show();
    widgets.box->setChecked(false);
    QVERIFY(!widgets.interval->isEnabled());
    QTest::mouseClick(widgets.ok, Qt::LeftButton);
    m_settings.sync();
    QCOMPARE(m_settings.value("CheckForUpdate").toBool(), false);
    QCOMPARE(m_settings.value("UpdateInterval").toString(), "Monthly"); // disabled, and stored all the same
}

void TestPreferences::cancel_data()
{
    QTest::addColumn<bool>("escape");
    QTest::newRow("button") << false;
    QTest::newRow("Escape") << true;
}

void TestPreferences::cancel()
{
    QFETCH(bool, escape);
    PreferencesDialog dialog;
    const Widgets widgets(dialog);
    dialog.show();
    widgets.box->setChecked(true);
    if (escape)
        QTest::keyClick(&dialog, Qt::Key_Escape);
    else
        QTest::mouseClick(widgets.cancel, Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
    m_settings.sync();
    QVERIFY(m_settings.allKeys().isEmpty());
    QVERIFY(widgets.box->isChecked()); // the settings are read only at the start
}

void TestPreferences::checkNow()
{
    PreferencesDialog dialog;
    const Widgets widgets(dialog);
    dialog.show();
    QString said;
    bool enabledMeanwhile = true;
    QTimer::singleShot(0, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        said = box->text();
        enabledMeanwhile = widgets.now->isEnabled();
        box->close();
    });
    QTest::mouseClick(widgets.now, Qt::LeftButton);
    QCOMPARE(said, "No updates available. Your software has latest updates installed.");
    QVERIFY(!enabledMeanwhile);
    QVERIFY(widgets.now->isEnabled());
    QVERIFY(dialog.isVisible());
}

void TestPreferences::drag()
{
    PreferencesDialog dialog;
    dialog.show();
    dialog.move(100, 100);
    const auto send = [&dialog](QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, dialog.mapFromGlobal(at), at, button, held, Qt::NoModifier);
        QApplication::sendEvent(&dialog, &event);
    };
    send(QEvent::MouseButtonPress, QPoint(120, 120), Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, QPoint(150, 110), Qt::NoButton, Qt::LeftButton);
    QCOMPARE(dialog.pos(), QPoint(130, 90));
    send(QEvent::MouseMove, QPoint(300, 300), Qt::NoButton, Qt::RightButton);
    QCOMPARE(dialog.pos(), QPoint(130, 90));
}

void TestPreferences::keyboard()
{
    PreferencesDialog dialog;
    const Widgets widgets(dialog);
    widgets.box->setChecked(true);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    const QList<QWidget *> order{widgets.box, widgets.interval, widgets.now, widgets.ok, widgets.cancel};
    for (QWidget *widget : order) {
        QCOMPARE(QApplication::focusWidget(), widget);
        QTest::keyClick(widget, Qt::Key_Tab);
    }
    widgets.interval->setFocus();
    QTest::keyClick(widgets.interval, Qt::Key_Return);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

QTEST_MAIN(TestPreferences)
#include "test_preferences.moc"
