#include "text/date_rules.h"

#include <QtTest>

class TestDateRules : public QObject
{
    Q_OBJECT

private slots:
    void display_data();
    void display();
};

void TestDateRules::display_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("common");
    QTest::addColumn<QString>("withIndia");

    const QString afternoon = "05 Mar 2012 02:07:09 PM";
    const auto both = [](const char *name, const QString &date, const QString &shown) {
        QTest::newRow(name) << date << shown << shown;
    };
    both("day name, no zone", "Mon, 5 Mar 2012 14:07:09\n", afternoon);
    both("offset is not applied", "Mon, 5 Mar 2012 14:07:09 +0530\n", afternoon);
    both("no day name, zone word", "5 Mar 2012 14:07:09 GMT", afternoon);
    both("zone word that is taken out", "Mon, 5 Mar 2012 14:07:09 EDT\n", afternoon);
    both("zone comment", "Mon, 5 Mar 2012 14:07:09 +0000 (UTC)\r\n", afternoon);
    both("year of two digits", "5 Mar 12 14:07:09 +0000", afternoon);
    both("long names", "Monday, 05 March 2012 14:07:09", afternoon);
    both("month first", "March 5, 2012 14:07 PM", "05 Mar 2012 02:07:00 PM");
    both("midnight", "5 Mar 2012 00:00:00", "05 Mar 2012 12:00:00 AM");
    both("no seconds", "Mon, 5 Mar 2012 14:07 +0000", QString());
    both("blank in front", "\n Mon, 5 Mar 2012 14:07:09", QString());
    both("no date", "yesterday", QString());
    both("line end alone", "\n", QString());
    QTest::newRow("India in the middle")
        << "5 Mar 2012 (India Standard Time) 14:07:09" << QString() << afternoon;
}

void TestDateRules::display()
{
    QFETCH(QString, date);
    QTEST(displayDate(date, ZoneNames::Common), "common");
    QTEST(displayDate(date, ZoneNames::CommonAndIndia), "withIndia");
}

QTEST_APPLESS_MAIN(TestDateRules)
#include "test_date_rules.moc"
