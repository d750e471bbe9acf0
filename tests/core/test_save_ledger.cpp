#include "browse/folder_tree.h"
#include "data_table.h"
#include "olm_files.h"
#include "save/bundle_check.h"
#include "save/file_saving.h"
#include "save/mail_saving.h"
#include "scan_run.h"

#include <csignal>

#include <sys/resource.h>

namespace
{
const char declaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
const QByteArray first = "From a\n";
const QByteArray second = "From b Mon c\n";
const QByteArray text = "Content-Type: text/plain; x\n\n";

using Meanwhile = std::function<void()>;

// The account in short: found = written + joined + left out, strays, then changes and reasons with their numbers; how
// many messages were changed where no single kind has as many.
QString account()
{
    const FolderCount &total = saveLedger.total();
    QString words = QString("%1 = %2 + %3 + %4, %5")
                        .arg(total.found)
                        .arg(total.written)
                        .arg(total.joined)
                        .arg(total.leftOut)
                        .arg(saveLedger.strays());
    qint64 most = 0;
    for (int i = 0; i < changeKinds; ++i) {
        const ChangeCount &change = saveLedger.change(ChangeKind(i));
        most = qMax(most, change.messages);
        if (change.messages > 0)
            words += QString(", %1 %2/%3").arg(nameOf(ChangeKind(i))).arg(change.messages).arg(change.count);
    }
    if (total.changed != most)
        words += QString(", changed %1").arg(total.changed);
    for (const LeftOutItem &item : saveLedger.leftOutItems())
        words += QString(", %1 %2")
                     .arg(nameOf(item.reason))
                     .arg(item.messages ? QString::number(*item.messages) : QString("?"));
    const auto &targets = saveLedger.targets();
    const auto shared = std::count_if(targets.begin(), targets.end(),
                                      [](const TargetCount &target) { return target.folders.size() > 1; });
    return shared == 0 ? words : words + QString(", shared %1").arg(shared);
}

qint64 fromLines(const QByteArray &mailbox)
{
    return mailbox.count("\nFrom ") + (mailbox.startsWith("From ") ? 1 : 0);
}
} // namespace

class TestSaveLedger : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { std::signal(SIGXFSZ, SIG_IGN); }

    // The example that is shown is the first of its kind.
    void firstExamples()
    {
        SaveLedger ledger;
        for (const char *path : {"a", "b"}) {
            ledger.addJoined(1, {path, 5});
            ledger.addStrays(1, {path, 5});
        }
        QCOMPARE(ledger.firstJoined().path + ledger.firstStray().path, QString("aa"));
    }

    // "meanwhile": what happens between the scan and the save.
    void accounts_data()
    {
        const DataTable row([this](int client, bool toApple, const FileMap &files, const Meanwhile &meanwhile,
                                   const QString &expected) {
            QVERIFY(QDir(out()).removeRecursively());
            scan(client, files);
            meanwhile();
            const FileMap before = readFiles(out());
            save(SaveMode::CountOnly, toApple);
            const QString counted = account();
            const qint64 bytes = saveLedger.bytes();
            QCOMPARE(readFiles(out()), before);
            save(SaveMode::Write, toApple);
            limitFiles(RLIM_INFINITY);
            bExactCopies = false;
            QCOMPARE(account(), expected);
            checkEquations();
            if (!expected.contains("unwritable")) {
                QCOMPARE(counted, expected);
                QVERIFY(bytes == saveLedger.bytes() || client == 5); // a boundary holds a random number
            }
        });
        const Meanwhile nothing = [] {};
        const auto mbox = [&](const char *name, const QByteArray &mailbox, const char *expected) {
            for (const bool toApple : {false, true})
                row(toApple ? name + QByteArray(" to Apple") : QByteArray(name), 3, toApple,
                    {{"Mail/Box", mailbox}}, nothing, expected);
        };
        mbox("whole", first + text + "x\n\n" + second + "y\n", "2 = 2 + 0 + 0, 0");
        mbox("one line", "From a Mon b\n", "0 = 0 + 0 + 0, 1");
        mbox("joined", first + text + "x\n" + second + "\xC3\xA9\n", "2 = 1 + 1 + 0, 0, latin1 1/1");
        mbox("quoted", first + text + "x\nFrom b\nFrom c\n", "1 = 1 + 0 + 0, 0, quoted 1/2");
        mbox("strays",
             first +
                 "x\n\xEF\xBB\xBF"
                 "From b\n\n" +
                 second + "From - c\n",
             "2 = 2 + 0 + 0, 2");
        mbox("characters",
             first + "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xFF\xE2\x82\n\n" + second + "\xC4\x80",
             "2 = 2 + 0 + 0, 0, lostCharacters 2/6, latin1 1/1");
        mbox("order mark", "\xEF\xBB\xBF" + first + "x\n\n" + second, "2 = 0 + 0 + 2, 0, order-mark 2");
        const auto emlx = [&](const char *name, const FileMap &files, const char *expected) {
            FileMap store;
            for (auto file = files.cbegin(); file != files.cend(); ++file)
                store.insert("a/In.mbox/Messages/" + file.key(), file.value());
            row(name, 2, false, store, nothing, expected);
        };
        emlx("emlx", {{"1.emlx", "5\nA: b\n" + QByteArray(declaration)}, {"2.emlx", "4 \nFrom b\n"}},
             "2 = 2 + 0 + 0, 0, quoted 1/1");
        emlx("no line end", {{"1.emlx", "9\nA: b\n\nxyz" + QByteArray(declaration)}},
             "1 = 1 + 0 + 0, 0, tail 1/3");
        emlx("cut", {{"1.emlx", "6\nA: b\n"}, {"2.emlx", "x\n"}}, "2 = 1 + 0 + 1, 1, unreadable 1");
        emlx("dropped header", {{"1.emlx", "0\nReceived-Spf: \xC3\xA9\n x\nFrom b\n"}},
             "1 = 1 + 0 + 0, 1, droppedHeader 1/1");
        const QByteArray section = "X-Apple-Content-Length: 1\n\n";
        emlx("parts",
             {{"1.partial.emlx", "0\n" + section + section},
              {"1.2.emlxpart", "From b\nFrom c"},
              {"2.partial.emlx", "0\n" + section}},
             "2 = 2 + 0 + 0, 2, emptyParts 2/2");

        row("two folders, one mailbox", 2, false,
            {{"a/A.mbox/B.mbox/1.emlx", "2\nA\n"}, {"a/A/B.mbox/2.emlx", "2\nA\n"}}, nothing,
            "2 = 2 + 0 + 0, 0, shared 1");
        const FileMap mails{{"In.mailbox/1.eml", "12\nFrom b\n"}, {"In.mailbox/2.eml", "A: \xC3\xA9\n\nx\n"}};
        row("MailMate", 8, false, mails, nothing, "2 = 2 + 0 + 0, 1, firstLine 1/1");
        row("Outspring", 9, true,
            {{"In/1.eml", " \r\nA\n\nx\xC3\xA9" + QByteArray(declaration) + "y\n"},
             {"In/2.eml", "From b\nFrom c\n"}},
            nothing, "2 = 2 + 0 + 0, 0, quoted 1/1, cutText 1/1, changed 2");
        const FileMap opera{{"store/account1/1.mbs", "From a\nFrom : b From : c\nFrom d\n"}};
        row("Opera to Outlook", 10, false, opera, nothing, "1 = 1 + 0 + 0, 1, quoted 1/1");
        row("Opera to Apple", 10, true, opera, nothing, "1 = 1 + 0 + 0, 2");

        const auto olm = [&](const char *name, const QByteArray &messages, const char *expected) {
            row(name, 5, true, {{"a.olm", messages + centralHeader().repeated(3)}}, nothing, expected);
        };
        const QByteArray sent = olmCopy("SentTime", "2014-11-12T09:08:04");
        const QByteArray address = olmAddress("a@x", "A");
        const QByteArray date = olmElement("OPFMessageIsOutgoing", "1") + sent;
        olm("olm",
            olmMail("Sent Items",
                    sent + olmCopy("MessageID", "&lt;a>") + olmCopy("Body", "&lt;html>\nFrom b\n&lt;/html>")),
            "1 = 1 + 0 + 0, 1, newMessageId 1/1");
        olm("no date", olmMail("a", olmCopy("Subject", "a")), "1 = 1 + 0 + 0, 0, newDate 1/1");
        olm("no envelope", olmMail("a", olmElement("OPFMessageIsOutgoing", "7")), "1 = 0 + 1 + 0, 0");
        olm("fields",
            olmMail("a", date + olmCopy("Subject", QByteArray(1024, 'x')) +
                             olmCopy("ThreadTopic", "\xC3\xA9\xE2\x82\xAC") +
                             olmCopy("References", QByteArray(200, 'x'))),
            "1 = 1 + 0 + 0, 0, lostCharacters 1/1, latin1 1/1, lostField 1/1");
        olm("recipients",
            olmMail("a", date + olmCopy("ToAddresses", olmAddress("a@\xE2\x82\xAC", "A &quot;")) +
                             olmCopy("CCAddresses", address)),
            "1 = 1 + 0 + 0, 0, lostRecipients 1/1");
        const QByteArray list =
            olmCopy("AttachmentList", olmAttachmentItem("a", "u1") + olmAttachmentItem("b", "u2"));
        const QByteArray data = olmEntry({"u1", "x"}) + olmEntry({"u2", "y"});
        olm("attachments without a body", data + olmMail("a", date + list),
            "1 = 1 + 0 + 0, 0, unreachableParts 1/2");
        olm("attachments elsewhere", olmMail("a", date + olmCopy("Body", "x") + list),
            "1 = 1 + 0 + 0, 0, lostAttachments 1/2");

        const FileMap two{{"Mail/A", first + "x\n"}, {"Mail/B", first + "y\n\n" + second}};
        const auto change = [&](const char *name, int client, const FileMap &files,
                                const Meanwhile &meanwhile, const char *expected) {
            row(name, client, client == 5, files, meanwhile, expected);
        };
        change("mailbox gone", 3, two, removed("Mail/B"), "3 = 1 + 0 + 2, 0, vanished 2");
        change("mailbox shorter", 3, two, rewritten("Mail/B", first + "y\n"), "3 = 2 + 0 + 1, 0, vanished 1");
        change("mailbox emptied", 3, two, rewritten("Mail/B", ""), "3 = 1 + 0 + 2, 0, vanished 2");
        change("mailbox a folder", 3, two, folderInstead("Mail/B"), "3 = 1 + 0 + 2, 0, unreadable 2");
        change(
            "mailbox in the way", 3, two,
            [this] {
                writeFiles(out(), {{"Main Identity.rge/Mail/B/B.mbox/x", ""}});
            },
            "3 = 1 + 0 + 2, 0, unwritable 2");
        FileMap three;
        for (const char *number : {"1", "2", "3"})
            three.insert(QString("a/In.mbox/Messages/%1.emlx").arg(number), "2\nA\n");
        change(
            "messages gone", 2, three, [this] { QVERIFY(QDir(m_run->path("a")).removeRecursively()); },
            "3 = 0 + 0 + 3, 0, vanished 1, not-reached 1, not-reached 1");
        change(
            "messages in the way", 2, three,
            [this] {
                writeFiles(out(), {{"Main Identity.rge/Mail/a/In/In.mbox/x", ""}});
            },
            "3 = 0 + 0 + 3, 0, unwritable 1, unwritable 1, unwritable 1");
        change("part a folder", 2,
               {{"a/In.mbox/1.partial.emlx", "0\n" + section}, {"a/In.mbox/1.2.emlxpart", "x"}},
               folderInstead("a/In.mbox/1.2.emlxpart"), "1 = 0 + 0 + 1, 0, part 1");
        change("news", 2,
               {{"In.mbox/1.emlx", "2\nA\n"}, {"In.mbox/RSS/Apple Hot News.rssmbox/2.emlx", "2\nA\n"}},
               nothing, "2 = 1 + 0 + 1, 0, not-taken 1");
        FileMap many;
        for (int i = 0; i < 20; ++i)
            many.insert(QString("a/In.mbox/Messages/%1.emlx").arg(i), "0\n" + QByteArray(60000, 'x'));
        change(
            "disk full", 2, many, [] { limitFiles(700000); },
            "20 = 10 + 0 + 10, 0" + QByteArray(", unwritable 1").repeated(10));
        change(
            "disk full, exact copies", 2, many,
            [] {
                limitFiles(700000);
                bExactCopies = true;
            },
            "20 = 10 + 0 + 10, 0" + QByteArray(", unwritable 1").repeated(10));
        change("stopped mailbox", 3, {{"Mail/A", first + "x\n\n" + second}}, stopFrom(0),
               "2 = 0 + 0 + 2, 0, stopped 2");
        change("stopped messages", 2, three, stopFrom(30), "3 = 1 + 0 + 2, 0, stopped 1, stopped 1");
        const QByteArray archive = olmMail("a", date) + olmMail("a", date) + centralHeader().repeated(3);
        change("stopped archive", 5, {{"a.olm", archive}}, stopFrom(50), "2 = 1 + 0 + 1, 0, stopped 1");
        change("archive gone", 5, {{"a.olm", archive}}, removed("a.olm"), "2 = 0 + 0 + 2, 0, vanished 2");
        change("archive a folder", 5, {{"a.olm", archive}}, folderInstead("a.olm"),
               "2 = 0 + 0 + 2, 0, unreadable 2");
        change("another archive", 5, {{"a.olm", archive}}, rewritten("a.olm", archive + 'x'),
               "2 = 0 + 0 + 2, 0, vanished 2");
    }

    void accounts() { checkRow(); }

    void tooLarge()
    {
        scan(2,
             {{"In.mbox/1.partial.emlx", "0\nX-Apple-Content-Length: 1\n\n"}, {"In.mbox/1.2.emlxpart", "x"}});
        saveLedger.clear();
        saveDir = out();
        FileSaving saving(writeMail, SaveMode::CountOnly);
        saving.setLargestPartial(10);
        QVERIFY(saving.save(ByteSource::ofFile(m_run->path("In.mbox/1.partial.emlx"))));
        saving.closeMailbox();
        QCOMPARE(account(), QString("1 = 0 + 0 + 1, 1, too-large 1"));
        takeProblems();
    }

    void realStores()
    {
        const QString samples = qEnvironmentVariable("VELMORA_SOURCE") + "/samples/";
        QList<QPair<int, QString>> stores = {
            {1, samples + "apple-mbox"},  {2, samples + "apple-emlx"},
            {3, samples + "thunderbird"}, {5, samples + "outlook-2011/backup.olm"},
            {8, samples + "mailmate"},    {9, samples + "outspring"},
            {10, samples + "opera"}};
        const QString corpus = qEnvironmentVariable("VELMORA_CORPUS");
        for (const char *kind : {"emlx", "mbs"})
            for (const QString &set : QDir(corpus + '/' + kind).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
                stores.append({*kind == 'e' ? 2 : 10, corpus + '/' + kind + '/' + set});
        for (const auto &store : stores)
            for (const bool toApple : {false, true}) {
                if (toApple ? store.first < 3 : store.first == 5)
                    continue;
                QVERIFY(QDir(out()).removeRecursively());
                scan(store.first, {}, store.second);
                save(SaveMode::Write, toApple);
                checkEquations();
                QVERIFY2(saveLedger.total().found > 0, qPrintable(store.second));
            }
    }

private:
    static void limitFiles(rlim_t bytes)
    {
        const rlimit limit{bytes, RLIM_INFINITY};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    Meanwhile stopFrom(double percent)
    {
        return [=] { m_stopFrom = percent; };
    }
    Meanwhile removed(const QString &file)
    {
        return [=] { QVERIFY(QFile::remove(m_run->path(file))); };
    }
    Meanwhile folderInstead(const QString &file)
    {
        return [=] { QVERIFY(QFile::remove(m_run->path(file)) && QDir().mkpath(m_run->path(file))); };
    }
    Meanwhile rewritten(const QString &file, const QByteArray &bytes)
    {
        return [=] { m_run->write({{file, bytes}}); };
    }

    QString out() const { return m_out.path() + "/out"; }

    void scan(int client, const FileMap &files, const QString &store = QString())
    {
        m_stopFrom = 1000;
        m_run.reset(new ScanRun(client));
        m_run->write(files);
        m_run->scan(!store.isEmpty() ? store : client == 5 ? m_run->path("a.olm") : m_run->path());
        for (auto folder = objMapFID_PID.constBegin(); folder != objMapFID_PID.constEnd(); ++folder)
            addFolderRecord(folder.key(), folder.value());
        markFolder(llRootId, stateTicked);
    }

    void save(SaveMode mode, bool toApple)
    {
        saveDir = out();
        bForAppleMail = toApple;
        bForOutlookMail = !toApple;
        QMailSaving saving;
        saving.m_mode = mode;
        connect(
            &saving, &QMailSaving::OnIndivisibleProgressvalue, &saving,
            [this](double percent) { bStopFlag = bStopFlag || percent >= m_stopFrom; }, Qt::DirectConnection);
        QVERIFY(runToEnd(&saving));
        takeProblems();
    }

    void checkEquations() const
    {
        QVERIFY(saveLedger.addsUp());
        qint64 lines = 0;
        qint64 bytes = 0;
        const FileMap bundle = readFiles(out());
        for (auto file = bundle.cbegin(); file != bundle.cend(); ++file) {
            lines += file.key().endsWith(".mbox") ? fromLines(*file) : 0;
            bytes += file.key().endsWith(".mbox") ? file->size() : 0;
        }
        QCOMPARE(saveLedger.total().written + saveLedger.strays(), lines);
        QCOMPARE(saveLedger.bytes(), bytes);
        QCOMPARE(checkBundle(saveLedger).differences, QStringList());
    }

    QScopedPointer<ScanRun> m_run;
    QTemporaryDir m_out;
    double m_stopFrom = 1000; ///< the percentage at which a save is stopped
};

QTEST_GUILESS_MAIN(TestSaveLedger)
#include "test_save_ledger.moc"
