#include "app/problem_log.h"
#include "app/shared_state.h"
#include "data_table.h"
#include "save/mail_saving.h"
#include "store_files.h"
#include "worker_run.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#ifdef __linux__
#include <sys/xattr.h>
#endif

namespace
{
const char rge[] = "Main Identity.rge/";
const char dated[] = "From - Wed Nov 12 14:38:04 2014\n";
const char inMailbox[] = "Main Identity.mbox/Mail/In/In.mbox";
const char list[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist/>\n";
} // namespace

Q_DECLARE_METATYPE(std::atomic<bool> *)

class TestFileSave : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder.reset(new QTemporaryDir);
        m_saving.reset(new QMailSaving);
        connect(m_saving.data(), &QMailSaving::FinishSaving, this, [this] { ++m_finished; });
        discardScanResult();
        appendFolder(llRootId, 0);
        m_selectedFile = store();
        saveDir = out();
        FileSavingIdentification = false;
        takeProblems();
    }

    void cleanup()
    {
        discardScanResult();
        setStoreKind(nullptr);
    }

    void bundles_data()
    {
        const DataTable<std::atomic<bool> *, bool, FileMap, FileMap> row("kind", "toApple", "files",
                                                                         "bundle");
        row("emlx", &bEmlxFileFound, false,
            {{"V2/a/In.mbox/Messages/1.emlx", QByteArray("9\nA: b\n\nFrom c\n") + list},
             {"V2/a/In.mbox/Messages/2.partial.emlx",
              "9\nA: c\nReceived-Spf: x\n y\n\nX-Apple-Content-Length: 2\n"},
             {"V2/a/In.mbox/Sub.mbox/3.eml", "first\nA: \xE2\x82\xAC"},
             {"V2/RSS/Apple Hot News.rssmbox/In.mbox/4.emlx", "9\nA: d\n"}},
            {{"Main Identity.rge/Mail/V2/a/In/In.mbox",
              "From - &&&&&@@@####\nA: b\n\n>From c\n\nFrom - &&&&&@@@####\nA: "
              "c\n\nX-Apple-Content-Length: 2\n\n"},
             {"Main Identity.rge/Mail/V2/a/In/Sub/Sub.mbox", "From - &&&&&@@@####\nA: ?\n"}});
        const FileMap mailMate{
            {"Messages/IMAP/me/INBOX.mailbox/Messages/1.eml", QByteArray("X: y\nA: b\n\nFrom c\n") + list},
            {"Messages/IMAP/me/INBOX.mailbox/Messages/2.eml", "X: y\r\nReceived-Spf: x\r\n y\r\n"}};
        const QByteArray first = QByteArray("A: b\n\nFrom c\n") + list + '\n';
        const QByteArray second = "Received-Spf: x\n y\n\n";
        row("MailMate to Outlook", &bEmlFileFound, false, mailMate,
            {{"Main Identity.rge/Mail/me/INBOX/INBOX.mbox",
              "From ???@???\n" + first + "From ???@???\n" + second}});
        row("MailMate to Apple Mail", &bEmlFileFound, true, mailMate,
            {{"Main Identity.mbox/Mail/me/INBOX/INBOX.mbox", dated + first + dated + second}});
        const FileMap outspring{{"Work/1.eml", QByteArray("X: y\nA: b\n\nFrom c\n") + list},
                                {"Work/1.f.eml", "X: y\nReceived-Spf: x\n y\nB\n"},
                                {"Work/Sub/2.eml", ""}};
        row("Outspring to Outlook", &bemlandfemlfileFound, false, outspring,
            {{"Main Identity.rge/Mail/Work/Work.mbox",
              "From ???@???\nA: b\n\n>From c\n\nFrom ???@???\nB\n\n"},
             {"Main Identity.rge/Mail/Work/Sub/Sub.mbox", "From ???@???\n\n"}});
        row("Outspring to Apple Mail", &bemlandfemlfileFound, true, outspring,
            {{"Main Identity.mbox/Mail/Work/Work.mbox",
              QByteArray(dated) + "A: b\n\n>From c\n\n" + dated + "B\n\n"},
             {"Main Identity.mbox/Mail/Work/Sub/Sub.mbox", QByteArray(dated) + "\n"}});
        const FileMap opera{
            {"store/account1/2014/1.mbs", "X: y\nX-Opera-Location: INBOX:3\n\nFrom : c\nFrom d\n"},
            {"store/account1/2014/2.mbs", "X: y\nA: b\n"},
            {"accounts.ini", "[account1]\nAccount Name= Work \n"}};
        row("Opera to Outlook", &bMbsFileFound, false, opera,
            {{"Main Identity.rge/Mail/Work/INBOX/INBOX.mbox",
              "From ???@??? Fri Dec 19 10:37:38 2014\nX-Opera-Location: INBOX:3\n\n>From : c\nFrom d\n\n"},
             {"Main Identity.rge/Mail/Work/Mails/Mails.mbox",
              "From ???@??? Fri Dec 19 10:37:38 2014\nA: b\n\n"}});
        row("Opera to Apple Mail", &bMbsFileFound, true, opera,
            {{"Main Identity.mbox/Mail/Work/INBOX/INBOX.mbox",
              QByteArray(dated) + "X-Opera-Location: INBOX:3\n\nFrom : c\nFrom d\n\n"},
             {"Main Identity.mbox/Mail/Work/Mails/Mails.mbox", QByteArray(dated) + "A: b\n\n"}});
    }

    void bundles()
    {
        QFETCH(std::atomic<bool> *, kind);
        QFETCH(bool, toApple);
        QFETCH(FileMap, files);
        addStore(files);
        save(kind, toApple);
        QTEST(mailboxes(), "bundle");
        QCOMPARE(m_finished, 1);
        QVERIFY(FileSavingIdentification);
        QCOMPARE(takeProblems(), QStringList());
        const FileMap all = readFiles(out());
        QCOMPARE(all.value(rge + QString("Contents/PkgInfo")).size(), toApple ? 0 : 8);
        QCOMPARE(all.value(rge + QString("Contents/Info.plist")).size(), toApple ? 0 : 433);
        QCOMPARE(all.value(rge + QString("Archive.xml")).size(), toApple ? 0 : 278);
    }

    void parts_data()
    {
        const DataTable<QByteArray, FileMap, QByteArray, int> row("text", "parts", "saved", "problems");
        const QByteArray section = "X-Apple-Content-Length: 9\nB: c\n\n";
        const QByteArray s2 = section + "--\n";
        row("ordered by number", "A\n\n" + s2 + s2 + s2,
            {{"1.10.emlxpart", "ten\n"}, {"1.2.emlxpart", "two\r\n"}, {"1.3.emlxpart", "three"}},
            "A\n\n" + section + "two\n--\n" + section + "three--\n" + section + "ten\n--\n", 0);
        row("fewer parts", s2 + s2, {{"1.2.emlxpart", "two\n"}}, section + "two\n--\n" + s2, 0);
        row("more parts", s2, {{"1.2.emlxpart", "two\n"}, {"1.3.emlxpart", "three\n"}}, section + "two\n--\n",
            0);
        row("no place", "X-Apple-Content-Length: 9\n" + s2,
            {{"1.2.emlxpart", "two\n"}, {"1.3.emlxpart", "three\n"}},
            "X-Apple-Content-Length: 9\n" + section + "three\n--\n", 1);
        row("part bytes", s2, {{"1.2.emlxpart", QByteArray("\xE9\0lost\nFrom \n", 13)}},
            section + "\xE9"
                      "From \n--\n",
            0);
    }

    void parts()
    {
        QFETCH(QByteArray, text);
        QFETCH(FileMap, parts);
        QFETCH(QByteArray, saved);
        FileMap files{{"In.mbox/1.partial.emlx", "9\n" + text}};
        for (auto part = parts.cbegin(); part != parts.cend(); ++part)
            files.insert("In.mbox/" + part.key(), part.value());
        addStore(files);
        save(&bEmlxFileFound, false);
        QCOMPARE(mailboxes().value("Main Identity.rge/Mail/In/In.mbox"),
                 "From - &&&&&@@@####\n" + saved + "\n");
        QTEST(takeProblems().size(), "problems");
    }

    void foreignNamesStayInside()
    {
        addStore({{"store/a/1.mbs", "x\nX-Opera-Location: ../../../../up\n"},
                  {"accounts.ini", "[a]\nAccount Name=../..\n"}});
        save(&bMbsFileFound, true);
        QCOMPARE(mailboxes().keys(),
                 QStringList("Main Identity.mbox/Mail/%2E%2E/%2E%2E/%2E%2E/%2E%2E/%2E%2E/%2E%2E/up/up.mbox"));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
                 QStringList({"out", "store"}));
    }

    void mailboxesAlternate()
    {
        addStore(
            {{"A.mailbox/1.eml", "x\n1\n"}, {"A.mailbox/3.eml", "x\n3\n"}, {"B.mailbox/2.eml", "x\n2\n"}});
        addFolder(503, stateTicked, {"A.mailbox/1.eml", "B.mailbox/2.eml"});
        save(&bEmlFileFound, true);
        QCOMPARE(mailboxes(), (FileMap{{"Main Identity.mbox/Mail/A/A.mbox",
                                        QByteArray(dated) + "1\n\n" + dated + "3\n\n" + dated + "1\n\n"},
                                       {"Main Identity.mbox/Mail/B/B.mbox",
                                        QByteArray(dated) + "2\n\n" + dated + "2\n\n"}}));
    }

    void stop()
    {
        FileMap files;
        for (int i = 1; i <= 4; ++i)
            files.insert(QString("In.mailbox/%1.eml").arg(i), "x\n" + QByteArray::number(i) + "\n");
        addStore(files);
        addFolder(503, stateTicked, {"In.mailbox/4.eml"});
        connect(
            m_saving.data(), &QMailSaving::OnIndivisibleProgressvalue, m_saving.data(),
            [](double percent) { bStopFlag = bStopFlag || percent >= 40; }, Qt::DirectConnection);
        save(&bEmlFileFound, true);
        QCOMPARE(mailboxes(), (FileMap{{inMailbox, QByteArray(dated) + "1\n\n" + dated + "2\n\n"}}));
        QCOMPARE(m_finished, 0);
        QCOMPARE(noOfConvertedMessage.load(), quint64(2));
    }

    // A folder in the place of a file ends the save there, as a file that is gone does.
    void vanishedFile()
    {
        addStore({{"In.mailbox/1.eml", "x\n1\n"}, {"In.mailbox/2.eml", "x\n2\n"}, {"In.mailbox/3.eml", ""}});
        const QString gone = store() + "/In.mailbox/2.eml";
        for (const bool folder : {false, true}) {
            QVERIFY(folder ? QDir().mkpath(gone) : QFile::remove(gone));
            QVERIFY(QDir(out()).removeRecursively());
            save(&bEmlFileFound, true);
            QCOMPARE(mailboxes(), (FileMap{{inMailbox, QByteArray(dated) + "1\n\n"}}));
            QCOMPARE(m_finished, 0);
            const QStringList problems = takeProblems();
            QCOMPARE(problems.size(), 1);
            QVERIFY2(problems.first().contains(gone), qPrintable(problems.first()));
        }
    }

    // Nothing of a message is written when one of its parts can't be read.
    void vanishedPart()
    {
        addStore({{"In.mbox/1.partial.emlx", "9\nX-Apple-Content-Length: 9\n\nX-Apple-Content-Length: 9\n\n"},
                  {"In.mbox/1.1.emlxpart", "a"}});
        QVERIFY(QDir().mkpath(store() + "/In.mbox/1.2.emlxpart"));
        save(&bEmlxFileFound, false);
        QCOMPARE(mailboxes(), FileMap());
        QCOMPARE(m_finished, 0);
        QVERIFY(!FileSavingIdentification);
        QCOMPARE(takeProblems().size(), 1);
    }

    void unwritableMailbox()
    {
        addStore({{"A.mailbox/1.eml", "x\n1\n"}, {"B.mailbox/2.eml", "x\n2\n"}});
        writeFiles(out(), {{"Main Identity.mbox/Mail/A", "in the way"}});
        save(&bEmlFileFound, true);
        QCOMPARE(mailboxes(), (FileMap{{"Main Identity.mbox/Mail/A", "in the way"},
                                       {"Main Identity.mbox/Mail/B/B.mbox", QByteArray(dated) + "2\n\n"}}));
        QCOMPARE(m_finished, 1);
        const QStringList problems = takeProblems();
        QCOMPARE(problems.size(), 1);
        QVERIFY2(problems.first().contains("A/A.mbox"), qPrintable(problems.first()));
    }

    void unknownFile_data()
    {
        const DataTable<std::atomic<bool> *, bool> row("kind", "identified");
        row("emlx", &bEmlxFileFound, false);
        row("MailMate", &bEmlFileFound, true);
    }

    void unknownFile()
    {
        QFETCH(std::atomic<bool> *, kind);
        QFETCH(bool, identified);
        writeFiles(store(), {{"In.mbox/1.emlx", "x\n1\n"}});
        addFolder(502, stateTicked, {});
        appendMailItem(store() + "/In.mbox/1.emlx", 502);
        save(kind, false);
        QCOMPARE(mailboxes(), FileMap());
        QCOMPARE(m_finished, 1);
        QCOMPARE(noOfConvertedMessage.load(), quint64(1));
        QCOMPARE(FileSavingIdentification.load(), identified);
    }

    void laterFoldersRepeatTheEnd()
    {
        addStore({{"In.mailbox/1.eml", "x\n"}});
        for (qint64 id = 503; id < 506; ++id)
            addFolder(id, stateNotTicked, {});
        QSignalSpy hidden(m_saving.data(), &QMailSaving::OnSubProgressHide);
        save(&bEmlFileFound, true);
        QCOMPARE(m_finished, 4); // not behind the root, whose place is before the file
        QCOMPARE(hidden.count(), 4);
        QVERIFY(!bStopFlag);
    }

    void nothingTicked_data()
    {
        const DataTable<std::atomic<bool> *, int> row("kind", "hides");
        row("emlx", &bEmlxFileFound, 2);
        row("MailMate", &bEmlFileFound, 3);
    }

    void nothingTicked()
    {
        QFETCH(std::atomic<bool> *, kind);
        writeFiles(store(), {{"In.mailbox/1.eml", "x\n"}});
        addFolder(502, statePartlyTicked, {"In.mailbox/1.eml"});
        QSignalSpy hidden(m_saving.data(), &QMailSaving::ProgressDailogHide);
        save(kind, false);
        QCOMPARE(mailboxes(), FileMap());
        QCOMPARE(m_finished, 2);
        QTEST(hidden.count(), "hides");
        QVERIFY(bStopFlag);
    }

#ifdef __linux__
    void finderCodes()
    {
        addStore({{"In.mailbox/1.eml", "x\n"}});
        for (const bool toApple : {false, true}) {
            save(&bEmlFileFound, toApple);
            const QString path =
                out() + (toApple ? "/Main Identity.mbox" : "/Main Identity.rge") + "/Mail/In/In.mbox";
            QByteArray info(64, 'x');
            const auto size = ::getxattr(QFile::encodeName(path).constData(), "user.com.apple.FinderInfo",
                                         info.data(), size_t(info.size()));
            if (size < 0 && (errno == ENOTSUP || errno == EPERM))
                QSKIP("this file system has no extended attributes");
            info.truncate(int(size));
            QCOMPARE(info, QByteArray(toApple ? "\0\0\0\0OPIM" : "MBOXOPIM", 8) + QByteArray(24, '\0'));
        }
    }
#endif

private:
    QString store() const
    {
        return m_folder->filePath("store");
    }
    QString out() const
    {
        return m_folder->filePath("out");
    }
    /// A folder with its files, as a scan leaves them.
    void addFolder(qint64 id, quint8 state, const QStringList &files)
    {
        appendFolder(id, llRootId)->state = state;
        for (const QString &file : files) {
            appendMailItem(store() + '/' + file, id);
            listOfPathOfOnlyForTree.append(store() + '/' + file);
        }
    }

    // All files in one ticked folder, in the order of their names.
    void addStore(const FileMap &files)
    {
        writeFiles(store(), files);
        QStringList messages;
        for (const QString &file : files.keys())
            if (!file.endsWith(".emlxpart") && !file.endsWith(".ini"))
                messages.append(file);
        addFolder(502, stateTicked, messages);
    }

    void save(std::atomic<bool> *kind, bool toApple)
    {
        m_finished = 0;
        QVERIFY(QDir().mkpath(out()));
        setStoreKind(kind);
        bForAppleMail = toApple;
        bForOutlookMail = !toApple;
        QVERIFY(runToEnd(m_saving.data()));
        QCoreApplication::processEvents();
    }

    /// The mailboxes that were written, by their path below the save folder.
    FileMap mailboxes() const
    {
        FileMap files = readFiles(out());
        for (const char *fixed : {"Archive.xml", "Contents/Info.plist", "Contents/PkgInfo"})
            files.remove(QString(rge) + fixed);
        return files;
    }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<QMailSaving> m_saving;
    int m_finished = 0; ///< end signals of the last save
};

QTEST_GUILESS_MAIN(TestFileSave)
#include "test_file_save.moc"
