#include "app/problem_log.h"
#include "app/shared_state.h"
#include "data_table.h"
#include "save/mail_saving.h"
#include "store_files.h"
#include "worker_run.h"

#include <QSignalSpy>

#ifdef __linux__
#include <sys/xattr.h>
#endif

namespace
{
const QByteArray emlx = "From - &&&&&@@@####\n";
const QByteArray dated = "From - Wed Nov 12 14:38:04 2014\n";
const char inMailbox[] = "In/In.mbox";
const QByteArray list = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist/>\n";
const QMap<QString, int> outlookFiles{
    {"Archive.xml", 278}, {"Contents/Info.plist", 433}, {"Contents/PkgInfo", 8}};

// The file's Finder codes; "none" where the file system has none.
QByteArray finderInfo(const QString &path)
{
#ifdef __linux__
    QByteArray info(64, 'x');
    const auto size = ::getxattr(QFile::encodeName(path).constData(), "user.com.apple.FinderInfo",
                                 info.data(), size_t(info.size()));
    if (size >= 0 || (errno != ENOTSUP && errno != EPERM))
        return info.left(int(size));
#endif
    return "none";
}
} // namespace

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
        const DataTable row(
            [this](std::atomic<bool> *kind, bool toApple, const FileMap &files, const FileMap &saved) {
                addStore(files);
                save(kind, toApple);
                QCOMPARE(mailboxes(), saved);
                QCOMPARE(m_finished, 1);
                QVERIFY(FileSavingIdentification);
                QCOMPARE(takeProblems(), QStringList());
                const FileMap bundle = readFiles(savedBundle());
                for (const QString &file : outlookFiles.keys())
                    QCOMPARE(bundle.value(file).size(), toApple ? 0 : outlookFiles[file]);
                QCOMPARE(readFiles(out()).size(), saved.size() + (toApple ? 0 : outlookFiles.size()));
            });
        row("emlx", &bEmlxFileFound, false,
            {{"V2/a/In.mbox/Messages/1.emlx", "9\nA: b\n\nFrom c\n" + list},
             {"V2/a/In.mbox/Messages/2.partial.emlx",
              "9\nReceived-Spf: x\n y\n\nX-Apple-Content-Length: 2\n"},
             {"V2/a/In.mbox/Sub.mbox/3.eml", "first\nA: \xE2\x82\xAC"},
             {"V2/RSS/Apple Hot News.rssmbox/In.mbox/4.emlx", "9\nA: d\n"}},
            {{"V2/a/In/In.mbox", emlx + "A: b\n\n>From c\n\n" + emlx + "\nX-Apple-Content-Length: 2\n\n"},
             {"V2/a/In/Sub/Sub.mbox", emlx + "A: ?\n"}});
        const FileMap mailMate{
            {"Messages/IMAP/me/In.mailbox/Messages/1.eml", "X: y\nA: b\n\nFrom c\n" + list},
            {"Messages/IMAP/me/In.mailbox/Messages/2.eml", "X: y\r\nReceived-Spf: x\r\n y\r\n"}};
        const QByteArray first = "A: b\n\nFrom c\n" + list + '\n';
        const QByteArray second = "Received-Spf: x\n y\n\n";
        row("MailMate to Outlook", &bEmlFileFound, false, mailMate,
            {{"me/In/In.mbox", "From ???@???\n" + first + "From ???@???\n" + second}});
        row("MailMate to Apple", &bEmlFileFound, true, mailMate,
            {{"me/In/In.mbox", dated + first + dated + second}});
        const FileMap outspring{{"Work/1.eml", "X: y\nA: b\n\nFrom c\n" + list},
                                {"Work/1.f.eml", "X: y\nReceived-Spf: x\n y\nB\n"},
                                {"Work/Sub/2.eml", ""}};
        row("Outspring to Outlook", &bemlandfemlfileFound, false, outspring,
            {{"Work/Work.mbox", "From ???@???\nA: b\n\n>From c\n\nFrom ???@???\nB\n\n"},
             {"Work/Sub/Sub.mbox", "From ???@???\n\n"}});
        row("Outspring to Apple Mail", &bemlandfemlfileFound, true, outspring,
            {{"Work/Work.mbox", dated + "A: b\n\n>From c\n\n" + dated + "B\n\n"},
             {"Work/Sub/Sub.mbox", dated + "\n"}});
        const FileMap opera{
            {"store/account1/2014/1.mbs", "X: y\nX-Opera-Location: INBOX:3\n\nFrom : c\nFrom d\n"},
            {"store/account1/2014/2.mbs", "X: y\nA: b\n"},
            {"accounts.ini", "[account1]\nAccount Name= Work \n"}};
        const QByteArray separator = "From ???@??? Fri Dec 19 10:37:38 2014\n";
        row("Opera to Outlook", &bMbsFileFound, false, opera,
            {{"Work/INBOX/INBOX.mbox", separator + "X-Opera-Location: INBOX:3\n\n>From : c\nFrom d\n\n"},
             {"Work/Mails/Mails.mbox", separator + "A: b\n\n"}});
        row("Opera to Apple Mail", &bMbsFileFound, true, opera,
            {{"Work/INBOX/INBOX.mbox", dated + "X-Opera-Location: INBOX:3\n\nFrom : c\nFrom d\n\n"},
             {"Work/Mails/Mails.mbox", dated + "A: b\n\n"}});
    }

    void bundles() { checkRow(); }

    void parts_data()
    {
        const DataTable row(
            [this](const QByteArray &text, const FileMap &parts, const QByteArray &saved, int problems) {
                FileMap files{{"In.mbox/1.partial.emlx", "9\n" + text}};
                for (auto part = parts.cbegin(); part != parts.cend(); ++part)
                    files.insert("In.mbox/" + part.key(), part.value());
                addStore(files);
                save(&bEmlxFileFound, false);
                QCOMPARE(mailboxes().value("In/In.mbox"), emlx + saved + "\n");
                QCOMPARE(takeProblems().size(), problems);
            });
        const QByteArray section = "X-Apple-Content-Length: 9\nB: c\n\n";
        const QByteArray s2 = section + "--\n";
        row("ordered by number", "A\n\n" + s2 + s2 + s2,
            {{"1.10.emlxpart", "ten\n"}, {"1.2.emlxpart", "two\r\n"}, {"1.3.emlxpart", "three"}},
            "A\n\n" + section + "two\n--\n" + section + "three--\n" + section + "ten\n--\n", 0);
        row("fewer", s2 + s2, {{"1.2.emlxpart", "two\n"}}, section + "two\n--\n" + s2, 0);
        const FileMap twoParts{{"1.2.emlxpart", "two\n"}, {"1.3.emlxpart", "three\n"}};
        row("more", s2, twoParts, section + "two\n--\n", 0);
        row("no place", "X-Apple-Content-Length: 9\n" + s2, twoParts,
            "X-Apple-Content-Length: 9\n" + section + "three\n--\n", 1);
        row("part bytes", s2, {{"1.2.emlxpart", QByteArray("\xE9\0x\nFrom \n", 10)}},
            section + "\351From \n--\n", 0);
    }

    void parts() { checkRow(); }

    void foreignNamesStayInside()
    {
        addStore({{"store/a/1.mbs", "x\nX-Opera-Location: ../../../../up\n"},
                  {"accounts.ini", "[a]\nAccount Name=../..\n"}});
        save(&bMbsFileFound, true);
        QCOMPARE(mailboxes().keys(), QStringList("%2E%2E/%2E%2E/%2E%2E/%2E%2E/%2E%2E/%2E%2E/up/up.mbox"));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
                 QStringList({"out", "store"}));
    }

    void mailboxesAlternate()
    {
        addStore(
            {{"A.mailbox/1.eml", "x\n1\n"}, {"A.mailbox/3.eml", "x\n3\n"}, {"B.mailbox/2.eml", "x\n2\n"}});
        addFolder(503, stateTicked, {"A.mailbox/1.eml", "B.mailbox/2.eml"});
        save(&bEmlFileFound, true);
        QCOMPARE(mailboxes(), (FileMap{{"A/A.mbox", dated + "1\n\n" + dated + "3\n\n" + dated + "1\n\n"},
                                       {"B/B.mbox", dated + "2\n\n" + dated + "2\n\n"}}));
    }

    void stop()
    {
        FileMap files;
        for (const QByteArray number : {"1", "2", "3", "4"})
            files.insert("In.mailbox/" + number + ".eml", "x\n" + number + "\n");
        addStore(files);
        addFolder(503, stateTicked, {"In.mailbox/4.eml"});
        connect(
            m_saving.data(), &QMailSaving::OnIndivisibleProgressvalue, m_saving.data(),
            [](double percent) { bStopFlag = bStopFlag || percent >= 40; }, Qt::DirectConnection);
        save(&bEmlFileFound, true);
        QCOMPARE(mailboxes(), (FileMap{{inMailbox, dated + "1\n\n" + dated + "2\n\n"}}));
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
            QCOMPARE(mailboxes(), (FileMap{{inMailbox, dated + "1\n\n"}}));
            QCOMPARE(m_finished, 0);
            QVERIFY(onlyProblem().contains(gone));
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
        QCOMPARE(mailboxes(), (FileMap{{"A", "in the way"}, {"B/B.mbox", dated + "2\n\n"}}));
        QCOMPARE(m_finished, 1);
        QVERIFY(onlyProblem().contains("A/A.mbox"));
    }

    void unknownFile()
    {
        writeFiles(store(), {{"In.mbox/1.emlx", "x\n1\n"}});
        addFolder(502, stateTicked, {});
        appendMailItem(store() + "/In.mbox/1.emlx", 502);
        for (const bool mailMate : {false, true}) {
            save(mailMate ? &bEmlFileFound : &bEmlxFileFound, false);
            QCOMPARE(mailboxes(), FileMap());
            QCOMPARE(m_finished, 1);
            QCOMPARE(noOfConvertedMessage.load(), quint64(1));
            QCOMPARE(FileSavingIdentification.load(), mailMate);
        }
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

    void nothingTicked()
    {
        writeFiles(store(), {{"In.mailbox/1.eml", "x\n"}});
        addFolder(502, statePartlyTicked, {"In.mailbox/1.eml"});
        for (const bool mailMate : {false, true}) {
            QSignalSpy hidden(m_saving.data(), &QMailSaving::ProgressDailogHide);
            save(mailMate ? &bEmlFileFound : &bEmlxFileFound, false);
            QCOMPARE(mailboxes(), FileMap());
            QCOMPARE(m_finished, 2);
            QCOMPARE(hidden.count(), mailMate ? 3 : 2);
            QVERIFY(bStopFlag);
        }
    }

    void finderCodes()
    {
        addStore({{"In.mailbox/1.eml", "x\n"}});
        for (const bool toApple : {false, true}) {
            save(&bEmlFileFound, toApple);
            const QByteArray info = finderInfo(savedBundle() + "/Mail/" + inMailbox);
            if (info == "none")
                QSKIP("this file system has no extended attributes");
            QCOMPARE(info, QByteArray(toApple ? "\0\0\0\0OPIM" : "MBOXOPIM", 8) + QByteArray(24, '\0'));
        }
    }

private:
    QString store() const { return m_folder->filePath("store"); }
    QString out() const { return m_folder->filePath("out"); }
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

    QString savedBundle() const
    {
        return out() + (bForAppleMail ? "/Main Identity.mbox" : "/Main Identity.rge");
    }
    FileMap mailboxes() const { return readFiles(savedBundle() + "/Mail"); }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<QMailSaving> m_saving;
    int m_finished = 0; ///< end signals of the last save
};

QTEST_GUILESS_MAIN(TestFileSave)
#include "test_file_save.moc"
