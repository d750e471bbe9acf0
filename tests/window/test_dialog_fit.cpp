#include "window_robot.h"

#include "app/translations_window.h"
#include "dialogs/about_dialog.h"
#include "dialogs/preferences_dialog.h"

#include <QTranslator>

// The dialogs have fixed sizes: their texts must fit with other fonts and in each language all the same.
class TestDialogFit : public QObject
{
    Q_OBJECT

private slots:
    void texts_data();
    void texts();
    void cleanup() { qDeleteAll(qApp->findChildren<QTranslator *>()); }
};

// Names each label and button of the dialog whose text is cut off.
static QStringList cutTexts(const QWidget *dialog)
{
    QStringList cut;
    for (const QWidget *widget : dialog->findChildren<QWidget *>()) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        if (!widget->isVisible() || (label ? label->text() : button ? button->text() : QString()).isEmpty())
            continue;
        const bool wraps = label && label->wordWrap();
        QSize needed(wraps ? 0 : widget->sizeHint().width(),
                     wraps ? label->heightForWidth(widget->width()) : widget->fontMetrics().height());
        if (qobject_cast<const QPushButton *>(widget)) // whose hint has much air in it
            needed.setWidth(widget->fontMetrics().horizontalAdvance(button->text()) + 6);
        if (needed.width() > widget->width() || needed.height() > widget->height())
            cut.append(widget->objectName());
    }
    return cut;
}

void TestDialogFit::texts_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<int>("points");
    for (const int points : {9, 10, 11, 12}) {
        QTest::addRow("English, %d points", points) << QLocale(QLocale::English) << points;
        QTest::addRow("German, %d points", points) << QLocale(QLocale::German) << points;
    }
}

void TestDialogFit::texts()
{
    QFETCH(QLocale, locale);
    QFETCH(int, points);
    QLocale::setDefault(locale);
    installTranslations(qApp);
    QApplication::setFont(QFont("DejaVu Sans", points));
    strPlistPath = qEnvironmentVariable("VELMORA_SOURCE") + "/resources/MailConverterLink.plist";

    WindowRobot robot;
    pMessageSavingThread->m_mailClientIndex = 3;
    auto *target = new SaveAsWindow(robot.window);
    auto *preferences = robot.window->findChild<PreferencesDialog *>();
    auto *about = robot.window->findChild<AboutDlg *>();
    const bool german = locale.language() == QLocale::German;
    QCOMPARE(preferences->findChild<QPushButton *>("CancelButton")->text(), german ? "Abbrechen" : "Cancel");
    const QList<QPair<QWidget *, QSize>> dialogs{{preferences, {462, 166}},
                                                 {about, {524, 295}},
                                                 {m_pParseDatabase, {477, 243}},
                                                 {target, {350, 150}},
                                                 {robot.importWindow(), {467, 200}}};
    for (const auto &[dialog, size] : dialogs) {
        dialog->show();
        QCOMPARE(cutTexts(dialog).join(' '), QString());
        QCOMPARE(dialog->size(), size);
    }
}

QTEST_MAIN(TestDialogFit)
#include "test_dialog_fit.moc"
