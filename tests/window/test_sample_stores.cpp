#include "window_robot.h"

/// The sample store of each client goes through the window: scan, list, preview, save.
class TestSampleStores : public QObject
{
    Q_OBJECT

private slots:
    void road_data()
    {
        // "header": stands in the preview of one of the folder's messages
        const DataTable table([](int client, const QString &store, const QByteArray &target,
                                 const QString &folder, const QString &count, const QString &header,
                                 const QString &mailbox) {
            QTemporaryDir out;
            WindowRobot robot;
            robot.scan(qEnvironmentVariable("VELMORA_SOURCE") + "/samples/" + store, client);
            robot.clickFolder(folder);
            QCOMPARE(robot.statusCount(), count);
            QString headers;
            for (int i = 0; i < robot.list()->topLevelItemCount(); ++i) {
                robot.list()->setCurrentItem(robot.list()->topLevelItem(i));
                headers += robot.header() + '\n';
            }
            QVERIFY2(headers.contains(header), qPrintable(headers));

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
            QVERIFY2(files.value(mailbox).startsWith("From "),
                     qPrintable(QStringList(files.keys()).join('\n')));
        });
        const auto row = [&](int client, const QByteArray &store, const QByteArray &target,
                             const char *folder, const char *count, const char *header, const char *mailbox) {
            const char *bundle = target == outlook ? "Main Identity.rge/Mail/" : "Main Identity.mbox/Mail/";
            table(store + target, client, store, target, folder, count, header, QString(bundle) + mailbox);
        };
        row(5, "outlook-2011/backup.olm", apple, "Inbox/Clients", "1", "Offer", "Inbox/Clients/Clients.mbox");
        row(2, "apple-emlx", outlook, "Mail/POP-otto@office.example/Archive/Year 2011", "1", "Old papers",
            "POP-otto@office.example/Archive/Year 2011/Year 2011.mbox");
        for (const QByteArray &target : {outlook, apple}) {
            row(8, "mailmate", target, "Mail/Messages/IMAP/lena@harbour.example/INBOX", "2", "Coffee?",
                "lena@harbour.example/INBOX/INBOX.mbox");
            row(9, "outspring", target, "Mail/Projects/Barn", "1", "Offer", "Projects/Barn/Barn.mbox");
            row(10, "opera", target, "Mail/Work/INBOX", "2", "Flour", "Work/INBOX/INBOX.mbox");
        }
    }

    void road() { checkRow(); }

private:
    const QByteArray outlook = "radioButtonforOutlook";
    const QByteArray apple = "radioButtonforApple";
};

QTEST_MAIN(TestSampleStores)
#include "test_sample_stores.moc"
