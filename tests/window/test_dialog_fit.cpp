#include "app/shared_state.h"
#include "app/translations_window.h"
#include "dialogs/about_dialog.h"
#include "dialogs/preferences_dialog.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTranslator>
#include <QtTest>

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
static QStringList cutTexts(const QDialog &dialog)
{
    QStringList cut;
    for (const QWidget *widget : dialog.findChildren<QWidget *>()) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        if (!widget->isVisible() || !(label || qobject_cast<const QAbstractButton *>(widget)))
            continue;
        const bool wraps = label && label->wordWrap();
        const int height = wraps ? label->heightForWidth(label->width()) : widget->sizeHint().height();
        if (height > widget->height() || (!wraps && widget->sizeHint().width() > widget->width()))
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

    PreferencesDialog preferences;
    AboutDlg about;
    preferences.show();
    about.show();
    const bool german = locale.language() == QLocale::German;
    QCOMPARE(preferences.findChild<QPushButton *>("CancelButton")->text(), german ? "Abbrechen" : "Cancel");
    QCOMPARE(cutTexts(preferences).join(' '), QString());
    QCOMPARE(cutTexts(about).join(' '), QString());
    QCOMPARE(preferences.size(), QSize(462, 166));
    QCOMPARE(about.size(), QSize(524, 295));
}

QTEST_MAIN(TestDialogFit)
#include "test_dialog_fit.moc"
