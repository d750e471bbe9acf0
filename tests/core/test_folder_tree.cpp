#include "app/shared_state.h"
#include "browse/folder_tree.h"

#include <QtTest>

class TestFolderTree : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        discardScanResult();
        // 501 root > 502 Mail > (503 A > 505 A1, 504 B)
        addFolderRecord(502, 501);
        addFolderRecord(503, 502);
        addFolderRecord(504, 502);
        addFolderRecord(505, 503);
    }
    void cleanup() { discardScanResult(); }

    void displayName_data();
    void displayName();
    void ticking_data();
    void ticking();
};

void TestFolderTree::displayName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << "Inbox"
                           << "Inbox";
    QTest::newRow("bundle") << "Inbox.mbox"
                            << "Inbox";
    QTest::newRow("mbox itself") << "mbox"
                                 << "mbox";
    QTest::newRow("imap") << "INBOX.imapmbox"
                          << "INBOX";
    QTest::newRow("every one goes") << "a.mboxb.mbox"
                                    << "ab";
    QTest::newRow("only the first kind") << "a.mbox.mailbox"
                                         << "a.mbox";
    QTest::newRow("case counts") << "A.MBOX"
                                 << "A.MBOX";
}

void TestFolderTree::displayName()
{
    QFETCH(QString, name);
    QTEST(::displayName(name), "shown");
}

void TestFolderTree::ticking_data()
{
    QTest::addColumn<QVector<QPair<int, int>>>("clicks"); // folder, state
    QTest::addColumn<QVector<int>>("states");             // of 501 to 505
    using Clicks = QVector<QPair<int, int>>;
    QTest::newRow("root ticks all") << Clicks{{501, 1}} << QVector<int>{1, 1, 1, 1, 1};
    QTest::newRow("root unticks all") << Clicks{{501, 1}, {501, 3}} << QVector<int>{3, 3, 3, 3, 3};
    QTest::newRow("one of two sisters") << Clicks{{504, 1}} << QVector<int>{2, 2, 3, 1, 3};
    QTest::newRow("both sisters") << Clicks{{504, 1}, {503, 1}} << QVector<int>{1, 1, 1, 1, 1};
    QTest::newRow("an only child ticks its parent") << Clicks{{505, 1}} << QVector<int>{2, 2, 1, 3, 1};
    QTest::newRow("last one unticked") << Clicks{{505, 1}, {505, 3}} << QVector<int>{3, 3, 3, 3, 3};
    QTest::newRow("unknown folder") << Clicks{{999, 1}} << QVector<int>{3, 3, 3, 3, 3};
}

void TestFolderTree::ticking()
{
    using Clicks = QVector<QPair<int, int>>;
    QFETCH(Clicks, clicks);
    for (const auto &click : clicks)
        markFolder(click.first, static_cast<quint8>(click.second));
    QVector<int> states;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
        states.append(folder->state);
    QTEST(states, "states");
}

QTEST_APPLESS_MAIN(TestFolderTree)
#include "test_folder_tree.moc"
