#include "app/problem_log.h"
#include "app/shared_state.h"
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
const char mbox[] = "Main Identity.mbox/";
const char dated[] = "From - Wed Nov 12 14:38:04 2014\n";
const char list[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist/>\n";
} // namespace

Q_DECLARE_METATYPE(std::atomic<bool> *)

class TestFileSave : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void bundles_data();
    void bundles();
    void parts_data();
    void parts();
    void operaAccounts();
    void foreignNamesStayInside();
    void mailboxesAlternate();
    void stop();
    void vanishedFile_data();
    void vanishedFile();
    void vanishedPart();
    void unwritableMailbox();
    void unknownFile_data();
    void unknownFile();
    void laterFoldersRepeatTheEnd();
    void nothingTicked_data();
    void nothingTicked();
    void finderCodes_data();
    void finderCodes();

private:
    QString store() const { return m_folder->filePath("store"); }
    QString out() const { return m_folder->filePath("out"); }
    /// A folder with its files, as a scan leaves them.
    void addFolder(qint64 id, quint8 state, const QStringList &files);
    void addStore(const FileMap &files);
    void save(std::atomic<bool> *kind, bool toApple);
    /// The mailboxes that were written, by their path below the save folder.
    FileMap mailboxes() const;

    QScopedPointer<QTemporaryDir> m_folder;
    QMailSaving m_saving;
};

void TestFileSave::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QDir().mkpath(out()));
    discardScanResult();
    appendFolder(llRootId, 0);
    m_selectedFile = store();
    saveDir = out();
    FileSavingIdentification = false;
    takeProblems();
}

void TestFileSave::cleanup()
{
    discardScanResult();
    setStoreKind(nullptr);
    m_saving.disconnect();
}

void TestFileSave::addFolder(qint64 id, quint8 state, const QStringList &files)
{
    appendFolder(id, llRootId)->state = state;
    for (const QString &file : files) {
        appendMailItem(store() + '/' + file, id);
        listOfPathOfOnlyForTree.append(store() + '/' + file);
    }
}

// All files in one ticked folder, in the order of their names.
void TestFileSave::addStore(const FileMap &files)
{
    writeFiles(store(), files);
    QStringList messages;
    for (const QString &file : files.keys())
        if (!file.endsWith(".emlxpart") && !file.endsWith(".ini"))
            messages.append(file);
    addFolder(502, stateTicked, messages);
}

void TestFileSave::save(std::atomic<bool> *kind, bool toApple)
{
    setStoreKind(kind);
    bForAppleMail = toApple;
    bForOutlookMail = !toApple;
    QVERIFY(runToEnd(&m_saving));
}

FileMap TestFileSave::mailboxes() const
{
    FileMap files = readFiles(out());
    for (const char *fixed : {"Archive.xml", "Contents/Info.plist", "Contents/PkgInfo"})
        files.remove(QString(rge) + fixed);
    return files;
}

void TestFileSave::bundles_data()
{
    QTest::addColumn<std::atomic<bool> *>("kind");
    QTest::addColumn<bool>("toApple");
    QTest::addColumn<FileMap>("files");
    QTest::addColumn<FileMap>("bundle");

    QTest::newRow("emlx")
        << &bEmlxFileFound << false
        << FileMap{{"V2/a/In.mbox/Messages/1.emlx", QByteArray("9\nA: b\n\nFrom c\n") + list},
                   {"V2/a/In.mbox/Messages/2.partial.emlx",
                    "9\nA: c\nReceived-Spf: x\n y\n\nX-Apple-Content-Length: 2\n"},
                   {"V2/a/In.mbox/Sub.mbox/3.eml", "first\nA: \xE2\x82\xAC"},
                   {"V2/RSS/Apple Hot News.rssmbox/In.mbox/4.emlx", "9\nA: d\n"}}
        << FileMap{{"Main Identity.rge/Mail/V2/a/In/In.mbox",
                    "From - &&&&&@@@####\nA: b\n\n>From c\n\nFrom - &&&&&@@@####\nA: "
                    "c\n\nX-Apple-Content-Length: 2\n\n"},
                   {"Main Identity.rge/Mail/V2/a/In/Sub/Sub.mbox", "From - &&&&&@@@####\nA: ?\n"}};
    const FileMap mailMate{
        {"Messages/IMAP/me/INBOX.mailbox/Messages/1.eml", QByteArray("X: y\nA: b\n\nFrom c\n") + list},
        {"Messages/IMAP/me/INBOX.mailbox/Messages/2.eml", "X: y\r\nReceived-Spf: x\r\n y\r\n"}};
    const QByteArray first = QByteArray("A: b\n\nFrom c\n") + list + '\n';
    const QByteArray second = "Received-Spf: x\n y\n\n";
    QTest::newRow("MailMate to Outlook") << &bEmlFileFound << false << mailMate
                                         << FileMap{{"Main Identity.rge/Mail/me/INBOX/INBOX.mbox",
                                                     "From ???@???\n" + first + "From ???@???\n" + second}};
    QTest::newRow("MailMate to Apple Mail")
        << &bEmlFileFound << true << mailMate
        << FileMap{{"Main Identity.mbox/Mail/me/INBOX/INBOX.mbox", dated + first + dated + second}};
    const FileMap outspring{{"Work/1.eml", QByteArray("X: y\nA: b\n\nFrom c\n") + list},
                            {"Work/1.f.eml", "X: y\nReceived-Spf: x\n y\nB\n"},
                            {"Work/Sub/2.eml", ""}};
    QTest::newRow("Outspring to Outlook")
        << &bemlandfemlfileFound << false << outspring
        << FileMap{{"Main Identity.rge/Mail/Work/Work.mbox",
                    "From ???@???\nA: b\n\n>From c\n\nFrom ???@???\nB\n\n"},
                   {"Main Identity.rge/Mail/Work/Sub/Sub.mbox", "From ???@???\n\n"}};
    QTest::newRow("Outspring to Apple Mail")
        << &bemlandfemlfileFound << true << outspring
        << FileMap{{"Main Identity.mbox/Mail/Work/Work.mbox",
                    QByteArray(dated) + "A: b\n\n>From c\n\n" + dated + "B\n\n"},
                   {"Main Identity.mbox/Mail/Work/Sub/Sub.mbox", QByteArray(dated) + "\n"}};
    const FileMap opera{
        {"store/account1/2014/1.mbs", "X: y\nX-Opera-Location: INBOX:3\n\nFrom : c\nFrom d\n"},
        {"store/account1/2014/2.mbs", "X: y\nA: b\n"},
        {"accounts.ini", "[account1]\nAccount Name= Work \n"}};
    QTest::newRow("Opera to Outlook")
        << &bMbsFileFound << false << opera
        << FileMap{
               {"Main Identity.rge/Mail/Work/INBOX/INBOX.mbox",
                "From ???@??? Fri Dec 19 10:37:38 2014\nX-Opera-Location: INBOX:3\n\n>From : c\nFrom d\n\n"},
               {"Main Identity.rge/Mail/Work/Mails/Mails.mbox",
                "From ???@??? Fri Dec 19 10:37:38 2014\nA: b\n\n"}};
    QTest::newRow("Opera to Apple Mail")
        << &bMbsFileFound << true << opera
        << FileMap{{"Main Identity.mbox/Mail/Work/INBOX/INBOX.mbox",
                    QByteArray(dated) + "X-Opera-Location: INBOX:3\n\nFrom : c\nFrom d\n\n"},
                   {"Main Identity.mbox/Mail/Work/Mails/Mails.mbox", QByteArray(dated) + "A: b\n\n"}};
}

void TestFileSave::bundles()
{
    QFETCH(std::atomic<bool> *, kind);
    QFETCH(bool, toApple);
    QFETCH(FileMap, files);
    addStore(files);
    QSignalSpy finished(&m_saving, &QMailSaving::FinishSaving);
    save(kind, toApple);
    QTEST(mailboxes(), "bundle");
    QCOMPARE(finished.count(), 1);
    QVERIFY(FileSavingIdentification);
    QCOMPARE(takeProblems(), QStringList());
    const FileMap all = readFiles(out());
    for (const auto &[name, size] : QMap<QString, int>{
             {"Contents/PkgInfo", 8},
             {"Contents/Info.plist", 433},
             {"Archive.xml", 278}}.toStdMap())
        QCOMPARE(all.value(rge + name).size(), toApple ? 0 : size);
}

void TestFileSave::parts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<FileMap>("parts");
    QTest::addColumn<QByteArray>("saved");
    QTest::addColumn<int>("problems");
    const QByteArray section = "X-Apple-Content-Length: 9\nB: c\n\n";
    const QByteArray s2 = section + "--\n";
    QTest::newRow("ordered by number")
        << "A\n\n" + s2 + s2 + s2
        << FileMap{{"1.10.emlxpart", "ten\n"}, {"1.2.emlxpart", "two\r\n"}, {"1.3.emlxpart", "three"}}
        << "A\n\n" + section + "two\n--\n" + section + "three--\n" + section + "ten\n--\n"
        << 0;
    QTest::newRow("fewer parts") << s2 + s2 << FileMap{{"1.2.emlxpart", "two\n"}}
                                 << section + "two\n--\n" + s2 << 0;
    QTest::newRow("more parts") << s2 << FileMap{{"1.2.emlxpart", "two\n"}, {"1.3.emlxpart", "three\n"}}
                                << section + "two\n--\n"
                                << 0;
    QTest::newRow("none") << s2 << FileMap{} << s2 << 0;
    QTest::newRow("another message's")
        << s2 << FileMap{{"11.2.emlxpart", "two\n"}, {"1/1.2.emlxpart", "two\n"}} << s2 << 0;
    QTest::newRow("no section") << QByteArray("A\n\nB\n") << FileMap{{"1.2.emlxpart", "two\n"}}
                                << QByteArray("A\n\nB\n") << 0;
    QTest::newRow("no place") << "X-Apple-Content-Length: 9\n" + s2
                              << FileMap{{"1.2.emlxpart", "two\n"}, {"1.3.emlxpart", "three\n"}}
                              << "X-Apple-Content-Length: 9\n" + section + "three\n--\n"
                              << 1;
    QTest::newRow("number in another way")
        << s2 << FileMap{{"1.02.emlxpart", "two\n"}, {"1.x.emlxpart", "x"}} << s2 << 0;
    QTest::newRow("part bytes") << s2 << FileMap{{"1.2.emlxpart", QByteArray("\xE9\0lost\nFrom \n", 13)}}
                                << section + "\xE9"
                                             "From \n--\n"
                                << 0;
}

void TestFileSave::parts()
{
    QFETCH(QByteArray, text);
    QFETCH(FileMap, parts);
    QFETCH(QByteArray, saved);
    FileMap files{{"In.mbox/1.partial.emlx", "9\n" + text}};
    for (auto part = parts.cbegin(); part != parts.cend(); ++part)
        files.insert("In.mbox/" + part.key(), part.value());
    addStore(files);
    save(&bEmlxFileFound, false);
    QCOMPARE(mailboxes().value("Main Identity.rge/Mail/In/In.mbox"), "From - &&&&&@@@####\n" + saved + "\n");
    QTEST(takeProblems().size(), "problems");
}

// The key serves where its first section has no name in its first 101 lines.
void TestFileSave::operaAccounts()
{
    addStore({{"mail/store/a/1.mbs", "x\n"},
              {"mail/store/b/2.mbs", "x\n"},
              {"mail/store/c/3.mbs", "x\n"},
              {"mail/accounts.ini", "[a]\nAccount Name=Anna\n[b]\n" + QByteArray("x\n").repeated(101) +
                                        "Account Name=Bea\n[c]\nAccount Name=\n"}});
    save(&bMbsFileFound, true);
    QCOMPARE(mailboxes().keys(), QStringList({"Main Identity.mbox/Mail/Anna/Mails/Mails.mbox",
                                              "Main Identity.mbox/Mail/b/Mails/Mails.mbox",
                                              "Main Identity.mbox/Mail/c/Mails/Mails.mbox"}));
}

void TestFileSave::foreignNamesStayInside()
{
    addStore({{"store/a/1.mbs", "x\nX-Opera-Location: ../../../../up\n"},
              {"accounts.ini", "[a]\nAccount Name=../..\n"}});
    save(&bMbsFileFound, true);
    QCOMPARE(mailboxes().keys(),
             QStringList("Main Identity.mbox/Mail/%2E%2E/%2E%2E/%2E%2E/%2E%2E/%2E%2E/%2E%2E/up/up.mbox"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
             QStringList({"out", "store"}));
}

void TestFileSave::mailboxesAlternate()
{
    addStore({{"A.mailbox/1.eml", "x\n1\n"}, {"A.mailbox/3.eml", "x\n3\n"}, {"B.mailbox/2.eml", "x\n2\n"}});
    addFolder(503, stateTicked, {"A.mailbox/1.eml", "B.mailbox/2.eml"});
    save(&bEmlFileFound, true);
    QCOMPARE(mailboxes(),
             (FileMap{{"Main Identity.mbox/Mail/A/A.mbox",
                       QByteArray(dated) + "1\n\n" + dated + "3\n\n" + dated + "1\n\n"},
                      {"Main Identity.mbox/Mail/B/B.mbox", QByteArray(dated) + "2\n\n" + dated + "2\n\n"}}));
}

void TestFileSave::stop()
{
    FileMap files;
    for (int i = 1; i <= 4; ++i)
        files.insert(QString("In.mailbox/%1.eml").arg(i), "x\n" + QByteArray::number(i) + "\n");
    addStore(files);
    addFolder(503, stateTicked, {"In.mailbox/4.eml"});
    QSignalSpy finished(&m_saving, &QMailSaving::FinishSaving);
    connect(
        &m_saving, &QMailSaving::OnIndivisibleProgressvalue, this,
        [](double percent) {
            if (percent >= 40)
                bStopFlag = true;
        },
        Qt::DirectConnection);
    save(&bEmlFileFound, true);
    QCOMPARE(mailboxes(), (FileMap{{"Main Identity.mbox/Mail/In/In.mbox",
                                    QByteArray(dated) + "1\n\n" + dated + "2\n\n"}}));
    QCOMPARE(finished.count(), 0);
    QCOMPARE(noOfConvertedMessage.load(), quint64(2));
}

void TestFileSave::vanishedFile_data()
{
    QTest::addColumn<bool>("folder");
    QTest::newRow("gone") << false;
    QTest::newRow("a folder of that name") << true;
}

void TestFileSave::vanishedFile()
{
    QFETCH(bool, folder);
    addStore(
        {{"In.mailbox/1.eml", "x\n1\n"}, {"In.mailbox/2.eml", "x\n2\n"}, {"In.mailbox/3.eml", "x\n3\n"}});
    const QString gone = store() + "/In.mailbox/2.eml";
    QVERIFY(QFile::remove(gone));
    QVERIFY(!folder || QDir().mkpath(gone));
    QSignalSpy finished(&m_saving, &QMailSaving::FinishSaving);
    save(&bEmlFileFound, true);
    QCOMPARE(mailboxes(), (FileMap{{"Main Identity.mbox/Mail/In/In.mbox", QByteArray(dated) + "1\n\n"}}));
    QCOMPARE(finished.count(), 0);
    const QStringList problems = takeProblems();
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems.first().contains(gone), qPrintable(problems.first()));
}

// Nothing of a message is written when one of its parts can't be read.
void TestFileSave::vanishedPart()
{
    addStore({{"In.mbox/1.partial.emlx", "9\nX-Apple-Content-Length: 9\n\nX-Apple-Content-Length: 9\n\n"},
              {"In.mbox/1.1.emlxpart", "a"}});
    QVERIFY(QDir().mkpath(store() + "/In.mbox/1.2.emlxpart"));
    QSignalSpy finished(&m_saving, &QMailSaving::FinishSaving);
    save(&bEmlxFileFound, false);
    QCOMPARE(mailboxes(), FileMap());
    QCOMPARE(finished.count(), 0);
    QVERIFY(!FileSavingIdentification);
    QCOMPARE(takeProblems().size(), 1);
}

void TestFileSave::unwritableMailbox()
{
    addStore({{"A.mailbox/1.eml", "x\n1\n"}, {"B.mailbox/2.eml", "x\n2\n"}});
    writeFiles(out(), {{"Main Identity.mbox/Mail/A", "in the way"}});
    QSignalSpy finished(&m_saving, &QMailSaving::FinishSaving);
    save(&bEmlFileFound, true);
    QCOMPARE(mailboxes(), (FileMap{{"Main Identity.mbox/Mail/A", "in the way"},
                                   {"Main Identity.mbox/Mail/B/B.mbox", QByteArray(dated) + "2\n\n"}}));
    QCOMPARE(finished.count(), 1);
    const QStringList problems = takeProblems();
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems.first().contains("A/A.mbox"), qPrintable(problems.first()));
}

void TestFileSave::unknownFile_data()
{
    QTest::addColumn<std::atomic<bool> *>("kind");
    QTest::addColumn<bool>("identified");
    QTest::newRow("emlx") << &bEmlxFileFound << false;
    QTest::newRow("MailMate") << &bEmlFileFound << true;
}

void TestFileSave::unknownFile()
{
    QFETCH(std::atomic<bool> *, kind);
    QFETCH(bool, identified);
    writeFiles(store(), {{"In.mbox/1.emlx", "x\n1\n"}});
    addFolder(502, stateTicked, {});
    appendMailItem(store() + "/In.mbox/1.emlx", 502);
    QSignalSpy finished(&m_saving, &QMailSaving::FinishSaving);
    save(kind, false);
    QCOMPARE(mailboxes(), FileMap());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(noOfConvertedMessage.load(), quint64(1));
    QCOMPARE(FileSavingIdentification.load(), identified);
}

void TestFileSave::laterFoldersRepeatTheEnd()
{
    addStore({{"In.mailbox/1.eml", "x\n"}});
    for (qint64 id = 503; id < 506; ++id)
        addFolder(id, stateNotTicked, {});
    QSignalSpy finished(&m_saving, &QMailSaving::FinishSaving);
    QSignalSpy hidden(&m_saving, &QMailSaving::OnSubProgressHide);
    save(&bEmlFileFound, true);
    QCOMPARE(finished.count(), 4); // not behind the root, whose place is before the file
    QCOMPARE(hidden.count(), 4);
    QVERIFY(!bStopFlag);
}

void TestFileSave::nothingTicked_data()
{
    QTest::addColumn<std::atomic<bool> *>("kind");
    QTest::addColumn<int>("hides");
    QTest::newRow("emlx") << &bEmlxFileFound << 2;
    QTest::newRow("MailMate") << &bEmlFileFound << 3;
}

void TestFileSave::nothingTicked()
{
    QFETCH(std::atomic<bool> *, kind);
    writeFiles(store(), {{"In.mailbox/1.eml", "x\n"}});
    addFolder(502, statePartlyTicked, {"In.mailbox/1.eml"});
    QSignalSpy finished(&m_saving, &QMailSaving::FinishSaving);
    QSignalSpy hidden(&m_saving, &QMailSaving::ProgressDailogHide);
    save(kind, false);
    QCOMPARE(mailboxes(), FileMap());
    QCOMPARE(finished.count(), 2);
    QTEST(hidden.count(), "hides");
    QVERIFY(bStopFlag);
}

void TestFileSave::finderCodes_data()
{
    QTest::addColumn<bool>("toApple");
    QTest::addColumn<QByteArray>("codes");
    QTest::newRow("Outlook") << false << QByteArray("MBOXOPIM");
    QTest::newRow("Apple Mail") << true << QByteArray("\0\0\0\0OPIM", 8);
}

void TestFileSave::finderCodes()
{
#ifdef __linux__
    QFETCH(bool, toApple);
    QFETCH(QByteArray, codes);
    addStore({{"In.mailbox/1.eml", "x\n"}});
    save(&bEmlFileFound, toApple);
    const QString path = out() + '/' + (toApple ? mbox : rge) + "Mail/In/In.mbox";
    QByteArray info(64, 'x');
    const auto size = ::getxattr(QFile::encodeName(path).constData(), "user.com.apple.FinderInfo",
                                 info.data(), size_t(info.size()));
    if (size < 0 && (errno == ENOTSUP || errno == EPERM))
        QSKIP("this file system has no extended attributes");
    info.truncate(int(size));
    QCOMPARE(info, codes + QByteArray(24, '\0'));
#else
    QSKIP("looks at the attribute that Linux uses");
#endif
}

QTEST_GUILESS_MAIN(TestFileSave)
#include "test_file_save.moc"
