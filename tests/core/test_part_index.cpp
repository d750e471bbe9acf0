#include "text/part_index.h"

#include <QtTest>

class TestPartIndex : public QObject
{
    Q_OBJECT

private slots:
    void order_data();
    void order();
    void takenOnce();
    void manyMailboxes();
};

void TestPartIndex::order_data()
{
    QTest::addColumn<QStringList>("parts");
    QTest::addColumn<QStringList>("taken");
    const QString dir = "/s/in.mbox/Messages/";
    const auto row = [&](const char *name, const QStringList &parts, const QStringList &taken) {
        QStringList given;
        QStringList expected;
        for (const QString &part : parts)
            given.append(dir + part);
        for (const QString &part : taken)
            expected.append(dir + part);
        QTest::newRow(name) << given << expected;
    };
    row("by number", {"7.10.emlxpart", "7.2.emlxpart", "7.3.emlxpart"},
        {"7.2.emlxpart", "7.3.emlxpart", "7.10.emlxpart"});
    row("only its own", {"77.1.emlxpart", "7.1.emlxpart", "17.1.emlxpart", "7-1.emlxpart"}, {"7.1.emlxpart"});
    row("deeper number", {"7.2.10.emlxpart", "7.2.9.emlxpart"}, {"7.2.9.emlxpart", "7.2.10.emlxpart"});
    row("one number twice: as they came", {"7.2.4.emlxpart", "7.1.4.emlxpart"},
        {"7.2.4.emlxpart", "7.1.4.emlxpart"});
    row("one path twice", {"7.1.emlxpart", "7.1.emlxpart"}, {"7.1.emlxpart"});
    row("a number written otherwise", {"7.02.emlxpart", "7.+3.emlxpart", "7.x.emlxpart", "7..emlxpart"}, {});
    row("below zero, above 32 bits", {"7.5000000000.emlxpart", "7.-1.emlxpart"},
        {"7.-1.emlxpart", "7.5000000000.emlxpart"});
    row("a folder of the message's name", {"7.d/1.emlxpart", "7.d/x.2.emlxpart"}, {"7.d/x.2.emlxpart"});
    row("the suffix in a folder's name", {"7.2.emlxpart", "7.1.emlxpart/7.2.emlxpart", "7.1.emlxpart"},
        {"7.1.emlxpart/7.2.emlxpart", "7.1.emlxpart", "7.2.emlxpart", "7.1.emlxpart/7.2.emlxpart"});
    row("the store's path again further down", {"s/in.mbox/Messages/7.1.emlxpart"},
        {"s/in.mbox/Messages/7.1.emlxpart"});
    QTest::newRow("words of the search itself")
        << QStringList{"find: '/s/in.mbox/Messages/7.d': Permission denied"} << QStringList{};
}

void TestPartIndex::order()
{
    QFETCH(QStringList, parts);
    QTEST(PartIndex(parts).takeParts("/s/in.mbox/Messages/7.partial.emlx"), "taken");
}

void TestPartIndex::takenOnce()
{
    PartIndex index({"/s/7.1.emlxpart", "/s/7.x.2.emlxpart", "/s/7.03.emlxpart"});
    QCOMPARE(index.takeParts("/s/7.x.partial.emlx"), QStringList{"/s/7.x.2.emlxpart"});
    QCOMPARE(index.takeParts("/s/7.partial.emlx"), QStringList{"/s/7.1.emlxpart"});
    QCOMPARE(index.takeParts("/s/7.partial.emlx"), QStringList());
    QCOMPARE(index.takeParts("/s/7.03.partial.emlx"), QStringList());
}

// The same message numbers in every mailbox must not make one message look at all mailboxes.
void TestPartIndex::manyMailboxes()
{
    QStringList parts;
    const int mailboxes = 400;
    const int messages = 100;
    const auto stem = [](int mailbox, int message) {
        return QString("/s/%1.mbox/Messages/%2.").arg(mailbox).arg(message);
    };
    for (int mailbox = 0; mailbox < mailboxes; ++mailbox)
        for (int message = 0; message < messages; ++message)
            parts.append(stem(mailbox, message) + "1.emlxpart");
    PartIndex index(parts);
    for (int i = 0; i < parts.size(); ++i) {
        const QString message = stem(i / messages, i % messages) + "partial.emlx";
        QCOMPARE(index.takeParts(message), QStringList{parts.at(i)});
    }
}

QTEST_APPLESS_MAIN(TestPartIndex)
#include "test_part_index.moc"
