#include "data_table.h"
#include "store_files.h"
#include "window_robot.h"

#include <QTemporaryDir>

/// The sample store of each client goes through the window: scan, list, preview, save.
class TestSampleStores : public QObject
{
    Q_OBJECT

private slots:
    void road_data()
    {
        // "header": stands in the preview of one of the folder's messages
        const DataTable<int, QString, QByteArray, QString, QString, QString, QString> table(
            "client", "store", "target", "folder", "count", "header", "mailbox");
        const auto row = [&](int client, const char *store, const char *target, const char *folder,
                             const char *count, const char *header, const char *mailbox) {
            table(QByteArray(store) + ", " + target, client, store, target, folder, count, header, mailbox);
        };
        const char outlook[] = "radioButtonforOutlook";
        const char apple[] = "radioButtonforApple";
        row(5, "outlook-2011/backup.olm", apple, "Inbox/Clients", "1", "Offer",
            "Main Identity.mbox/Mail/Inbox/Clients/Clients.mbox");
        row(2, "apple-emlx", outlook, "Mail/POP-otto@office.example/Archive/Year 2011", "1", "Old papers",
            "Main Identity.rge/Mail/POP-otto@office.example/Archive/Year 2011/Year 2011.mbox");
        for (const char *target : {outlook, apple}) {
            const QByteArray base =
                target == outlook ? "Main Identity.rge/Mail/" : "Main Identity.mbox/Mail/";
            row(8, "mailmate", target, "Mail/Messages/IMAP/lena@harbour.example/INBOX", "2", "Coffee?",
                base + "lena@harbour.example/INBOX/INBOX.mbox");
            row(9, "outspring", target, "Mail/Projects/Barn", "1", "Offer", base + "Projects/Barn/Barn.mbox");
            row(10, "opera", target, "Mail/Work/INBOX", "2", "Flour", base + "Work/INBOX/INBOX.mbox");
        }
    }

    void road()
    {
        QFETCH(int, client);
        QFETCH(QString, store);
        QFETCH(QByteArray, target);
        QFETCH(QString, folder);
        QFETCH(QString, header);
        QFETCH(QString, mailbox);
        QTemporaryDir out;
        WindowRobot robot;
        robot.scan(qEnvironmentVariable("VELMORA_SOURCE") + "/samples/" + store, client);
        robot.clickFolder(folder);
        QTEST(robot.statusCount(), "count");
        QStringList headers;
        for (int i = 0; i < robot.list()->topLevelItemCount(); ++i) {
            robot.list()->setCurrentItem(robot.list()->topLevelItem(i));
            headers.append(robot.header());
        }
        QVERIFY2(headers.join('\n').contains(header), qPrintable(headers.join('\n')));

        robot.tick("");
        robot.save(target, out.path());
        QTRY_VERIFY(robot.importWindow()->isVisible());
        QTRY_VERIFY(!pMailSaving->isRunning());
        QVERIFY(robot.isQuiet() && !IsPreview);
        // The end signals may come more than once, the window comes once.
        robot.click(robot.importWindow(), "OKButton");
        robot.settle();
        QVERIFY(!robot.importWindow()->isVisible());
        const FileMap files = readFiles(out.path());
        QVERIFY2(files.value(mailbox).startsWith("From "), qPrintable(QStringList(files.keys()).join('\n')));
    }
};

QTEST_MAIN(TestSampleStores)
#include "test_sample_stores.moc"
