#include "app/olm_records.h"
#include "browse/folder_tree.h"
#include "browse/olm_preview.h"
#include "browse/preview.h"
#include "data_table.h"
#include "olm_files.h"
#include "save/mail_saving.h"
#include "save/save_ledger.h"
#include "scan_run.h"

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
enum class Fault {
    None,
    BadPlace, ///< one byte of the file can't be read
    Shrinks,  ///< the file ends there, after it was opened
    Pieces    ///< all is read, a few bytes at a time
};

// What is wrong with one file. Set while no worker runs.
struct FaultyFile {
    Fault fault = Fault::None;
    ino_t inode = 0;
    off_t place = 0;
} faulty;
std::atomic<bool> failingClose{false};
} // namespace

// In the place of the system's: every reader of a store comes here.
extern "C" ssize_t pread(int file, void *to, size_t count, off_t position)
{
    constexpr size_t piece = 4099;
    struct stat info = {};
    if (faulty.fault != Fault::None && ::fstat(file, &info) == 0 && info.st_ino == faulty.inode) {
        const bool isBehind = faulty.fault == Fault::Shrinks && position > faulty.place;
        if (faulty.fault == Fault::BadPlace && position == faulty.place) {
            errno = EIO;
            return -1;
        }
        if (isBehind)
            return 0;
        if (faulty.fault == Fault::Pieces)
            count = std::min(count, piece);
        else if (position <= faulty.place)
            count = std::min(count, static_cast<size_t>(faulty.place - position));
    }
    return ::syscall(SYS_pread64, file, to, count, position);
}

// In the place of the system's: the closing of a mailbox B tells an error.
extern "C" int close(int file)
{
    const bool fails =
        failingClose && QFile::symLinkTarget("/proc/self/fd/" + QString::number(file)).endsWith("/B.mbox");
    const auto closed = static_cast<int>(::syscall(SYS_close, file));
    if (!fails)
        return closed;
    errno = EIO;
    return -1;
}

class TestFailingReads : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { std::signal(SIGXFSZ, SIG_IGN); }
    void cleanup() { faulty.fault = Fault::None; }

    void saves_data() { stores(&TestFailingReads::checkSaves); }
    void saves() { checkRow(); }

    void scans_data() { stores(&TestFailingReads::checkScans, false); }
    void scans() { checkRow(); }

    void previews_data() { stores(&TestFailingReads::checkPreviews, false); }
    void previews() { checkRow(); }

    void writes_data() { stores(&TestFailingReads::checkWrites); }
    void writes() { checkRow(); }

private:
    struct Store {
        int client;
        bool toApple;
        bool exact;
        FileMap files;
        QString file;     ///< the one that fails
        qint64 first = 0; ///< bytes of that file: where the large message, or its text, begins
        qint64 last = 0;  ///< and its last byte
    };

    // A store of each kind, with a small message in the folders A and C and a large one in B, whose file fails.
    // `eachWay`: to each target, converted and exact.
    void stores(void (TestFailingReads::*check)(const Store &), bool eachWay = true)
    {
        const DataTable row([=](const Store &store) { (this->*check)(store); });
        const QByteArray lines = QByteArray(79, 'x') + '\n';
        const QByteArray large = lines.repeated(4000);
        const auto add = [&](const char *name, int client, const FileMap &files, const QString &file) {
            for (const bool exact : {false, true})
                for (const bool toApple : {false, true}) {
                    const qint64 first = client == 5 ? files[file].indexOf(large) : 0;
                    const qint64 size = client == 5 ? large.size() : files[file].size();
                    if (!eachWay && (exact || toApple != (client == 5)))
                        continue;
                    if (client == 2 ? toApple : client == 5 && !toApple)
                        continue;
                    const QByteArray where = toApple ? " to Apple Mail" : " to Outlook";
                    row(name + where + (exact ? ", exact" : ""),
                        {client, toApple, exact, files, file, first, first + size - 1});
                }
        };
        const QByteArray head = "From a\nFrom: a@x\nSubject: s\n\n";
        add("mbox", 3, {{"Mail/A", head + "a\n"}, {"Mail/B", head + large}, {"Mail/C", head + "c\n"}},
            "Mail/B");
        const QByteArray mail = "X: y\nFrom: a@x\nSubject: s\n\n";
        const auto emlx = [&](const QByteArray &text) {
            return QByteArray::number(text.size()) + '\n' + text;
        };
        add("emlx", 2,
            {{"a/A.mbox/Messages/1.emlx", emlx(mail + "a\n")},
             {"a/B.mbox/Messages/2.emlx", emlx(mail + large)},
             {"a/C.mbox/Messages/3.emlx", emlx(mail + "c\n")}},
            "a/B.mbox/Messages/2.emlx");
        const QByteArray partial = "X: y\nContent-Type: multipart/mixed; boundary=b\n\n--b\n\nx\n--b\n"
                                   "X-Apple-Content-Length: 9\n\n\n--b--\n";
        add("part", 2,
            {{"a/A.mbox/Messages/1.emlx", emlx(mail + "a\n")},
             {"a/B.mbox/Messages/2.partial.emlx", emlx(partial)},
             {"a/B.mbox/Messages/2.2.emlxpart", large},
             {"a/C.mbox/Messages/3.emlx", emlx(mail + "c\n")}},
            "a/B.mbox/Messages/2.2.emlxpart");
        add("MailMate", 8,
            {{"A.mailbox/Messages/1.eml", mail + "a\n"},
             {"B.mailbox/Messages/2.eml", mail + large},
             {"C.mailbox/Messages/3.eml", mail + "c\n"}},
            "B.mailbox/Messages/2.eml");
        add("Outspring", 9, {{"A/1.eml", mail + "a\n"}, {"B/2.eml", mail + large}, {"C/3.eml", mail + "c\n"}},
            "B/2.eml");
        const auto located = [&](const char *folder) {
            return "X: y\nX-Opera-Location: " + QByteArray(folder) + ":1\n" + mail;
        };
        add("Opera", 10,
            {{"store/account1/1.mbs", located("A") + "a\n"},
             {"store/account1/2.mbs", located("B") + large},
             {"store/account1/3.mbs", located("C") + "c\n"}},
            "store/account1/2.mbs");
        const auto olm = [&](const char *folder, const QByteArray &body) {
            return olmMail(folder, olmElement("OPFMessageIsOutgoing", "1") +
                                       olmCopy("SentTime", "2014-11-12T09:08:04") + olmCopy("Body", body));
        };
        add("olm", 5,
            {{"a.olm", olm("A", "a") + olm("B", large) + olm("C", "c") + centralHeader().repeated(3)}},
            "a.olm");
    }

    void setFault(Fault fault, qint64 place)
    {
        struct stat info = {};
        QCOMPARE(::stat(QFile::encodeName(m_run->path(m_store.file)).constData(), &info), 0);
        faulty = {fault, info.st_ino, place};
    }

    // At the first byte, in the middle of the message, at the last byte.
    QList<qint64> places() const { return {m_store.first, (m_store.first + m_store.last) / 2, m_store.last}; }

    void scan(const Store &store)
    {
        m_store = store;
        m_run.reset(new ScanRun(store.client));
        m_run->write(store.files);
        rescan();
    }

    void rescan()
    {
        discardScanResult();
        CleanLinkedList();
        m_run->scan(m_store.client == 5 ? m_run->path(m_store.file) : m_run->path());
        for (auto folder = objMapFID_PID.constBegin(); folder != objMapFID_PID.constEnd(); ++folder)
            addFolderRecord(folder.key(), folder.value());
        markFolder(llRootId, stateTicked);
    }

    FileMap save()
    {
        QDir(out()).removeRecursively();
        return saveInto(out());
    }

    FileMap saveInto(const QString &folder)
    {
        takeProblems();
        takeUnread();
        takeUnwritten();
        saveDir = folder;
        bForAppleMail = m_store.toApple;
        bForOutlookMail = !m_store.toApple;
        bExactCopies = m_store.exact;
        QMailSaving saving;
        if (!runToEnd(&saving))
            QTest::qFail("the save hangs", __FILE__, __LINE__);
        bExactCopies = false;
        FileMap bundle = readFiles(folder);
        static const QRegularExpression made(
            "(Message-ID: |.*boundary=|--).*"); // anew in each save of an archive
        for (QByteArray &mailbox : bundle)
            mailbox = QString::fromLatin1(mailbox).remove(made).toLatin1();
        return bundle;
    }

    // The mailbox of a folder, by its name in the bundle.
    static QString mailboxOf(const char *folder, const FileMap &bundle)
    {
        for (const QString &file : bundle.keys())
            if (file.contains(QString("/%1.mbox").arg(folder)))
                return file;
        return {};
    }

    // It is told, with the file's name, and counted; the other messages are there, those behind it where they can be.
    void checkLoss(const FileMap &bundle, const FileMap &whole, const QString &named, bool behindToo = true)
    {
        const QStringList problems = takeProblems();
        QVERIFY2(problems.filter(named).size() > 0,
                 qPrintable(problems.join('\n') + " does not name " + named));
        QVERIFY(saveLedger.addsUp());
        QVERIFY(!saveLedger.isComplete());
        QVERIFY(saveLedger.total().leftOut >= 1);
        QVERIFY(saveLedger.total().found == 3);
        for (const char *other : {"A", "C"}) {
            const QString mailbox = mailboxOf(other, whole);
            QVERIFY(!mailbox.isEmpty());
            QVERIFY2(bundle.value(mailbox) == whole[mailbox] || (!behindToo && *other == 'C'), other);
        }
    }

    void checkSaves(const Store &store)
    {
        scan(store);
        const FileMap whole = save();
        QCOMPARE(takeProblems(), QStringList());
        QVERIFY(saveLedger.isComplete() && saveLedger.total().written == 3);
        setFault(Fault::Pieces, 0);
        QVERIFY(save() == whole);
        QCOMPARE(takeProblems(), QStringList());
        QVERIFY(saveLedger.isComplete() && saveLedger.total().written == 3);
        for (const Fault fault : {Fault::BadPlace, Fault::Shrinks})
            for (const qint64 place : places()) {
                setFault(fault, place);
                const FileMap bundle = save();
                QVERIFY(takeUnread());
                checkLoss(bundle, whole, m_store.file, fault == Fault::BadPlace || store.client != 5);
            }
    }

    // The store has a message in B whose file fails while it is shown.
    void checkPreviews(const Store &store)
    {
        scan(store);
        for (const Fault fault : {Fault::Pieces, Fault::BadPlace, Fault::Shrinks})
            for (const qint64 place : places()) {
                setFault(fault, place);
                takeUnread();
                showMessage();
                QCOMPARE(takeUnread(), fault != Fault::Pieces);
                QCOMPARE(takeProblems().filter(m_store.file).size() > 0, fault != Fault::Pieces);
            }
    }

    void showMessage() const
    {
        const QString path = m_run->path(m_store.file);
        if (m_store.client == 5) {
            const MailMLRC *record = olmRecordsOfFolder(objMapName_FID.value("B")).front();
            previewOfOlmMessage(QString::number(record->llBodyOffset), QString::number(record->llBodySize));
        } else if (m_store.client == 3) {
            const MboxMessageNode *message = messagesOfPath(path).front();
            previewOfMailboxMessage(path, QString::number(message->offset), QString::number(message->length));
        } else {
            previewOfFile(path);
        }
    }

    void checkScans(const Store &store)
    {
        scan(store);
        QCOMPARE(takeProblems(), QStringList());
        for (const Fault fault : {Fault::Pieces, Fault::BadPlace, Fault::Shrinks})
            for (const qint64 place : places()) {
                setFault(fault, place);
                takeUnread();
                rescan();
                const bool reads = store.client == 3 || store.client == 5 || store.client == 10;
                QCOMPARE(takeUnread(), reads && fault != Fault::Pieces);
                QCOMPARE(takeProblems().filter(m_store.file).size() > 0, reads && fault != Fault::Pieces);
            }
    }

    // The mailbox of B grows too large, can't be made or can't be closed; then nothing of the bundle can be made.
    void checkWrites(const Store &store)
    {
        scan(store);
        const FileMap whole = save();
        const QString mailbox = mailboxOf("B", whole);
        const rlimit limited{100000, RLIM_INFINITY};
        const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &limited);
        FileMap bundle = save();
        ::setrlimit(RLIMIT_FSIZE, &unlimited);
        QVERIFY(takeUnwritten());
        checkLoss(bundle, whole, "/B.mbox");
        QVERIFY(bundle.value(mailbox).isEmpty());

        const QString folder = QFileInfo(out() + '/' + mailbox).path();
        QDir(out()).removeRecursively();
        QVERIFY(QDir().mkpath(QFileInfo(folder).path()));
        QVERIFY(QFile::link("/dev/null", folder));
        bundle = saveInto(out());
        QVERIFY(takeUnwritten());
        checkLoss(bundle, whole, "/B.mbox");

        failingClose = true;
        bundle = save();
        failingClose = false;
        QVERIFY(takeUnwritten());
        checkLoss(bundle, whole, "/B.mbox");

        bundle = saveInto("/dev/null/out");
        QVERIFY(takeUnwritten());
        QVERIFY(takeProblems().filter(saveDir).size() > 0);
        QVERIFY(saveLedger.addsUp() && saveLedger.total().leftOut == 3);
    }

    QString out() const { return m_out.path() + "/out"; }

    Store m_store;
    QScopedPointer<ScanRun> m_run;
    QTemporaryDir m_out;
};

QTEST_GUILESS_MAIN(TestFailingReads)
#include "test_failing_reads.moc"
