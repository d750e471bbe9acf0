#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "data_table.h"

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

    void displayName_data()
    {
        const DataTable row(
            [](const QString &name, const QString &shown) { QCOMPARE(::displayName(name), shown); });
        row("plain", "Inbox", "Inbox");
        row("bundle", "Inbox.mbox", "Inbox");
        row("mbox itself", "mbox", "mbox");
        row("imap", "INBOX.imapmbox", "INBOX");
        row("every one goes", "a.mboxb.mbox", "ab");
        row("only the first kind", "a.mbox.mailbox", "a.mbox");
        row("imap before the plain one", "a.mbox.imapmbox", "a.mbox");
        row("case counts", "A.MBOX", "A.MBOX");
    }

    void displayName() { checkRow(); }

    void ticking_data()
    {
        // "clicks": folder, state; "states": of 501 to 505
        using Clicks = QVector<QPair<int, int>>;
        const DataTable row([](const Clicks &clicks, const QVector<int> &states) {
            for (const auto &click : clicks)
                markFolder(click.first, static_cast<quint8>(click.second));
            QVector<int> marked;
            for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next)
                marked.append(folder->state);
            QCOMPARE(marked, states);
        });
        row("root ticks all", {{501, 1}}, {1, 1, 1, 1, 1});
        row("root unticks all", {{501, 1}, {501, 3}}, {3, 3, 3, 3, 3});
        row("one of two sisters", {{504, 1}}, {2, 2, 3, 1, 3});
        row("both sisters", {{504, 1}, {503, 1}}, {1, 1, 1, 1, 1});
        row("an only child ticks its parent", {{505, 1}}, {2, 2, 1, 3, 1});
        row("last one unticked", {{505, 1}, {505, 3}}, {3, 3, 3, 3, 3});
        row("unknown folder", {{999, 1}}, {3, 3, 3, 3, 3});
    }

    void ticking() { checkRow(); }
};

QTEST_APPLESS_MAIN(TestFolderTree)
#include "test_folder_tree.moc"
