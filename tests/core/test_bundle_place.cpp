#include "app/problem_log.h"
#include "data_table.h"
#include "save/bundle_place.h"
#include "store_files.h"

#include <sys/stat.h>

namespace
{
const QString rge = "Main Identity.rge";
const FileMap before{{"Mail/a.mbox", "old"}};
const FileMap after{{"Mail/b.mbox", "new"}};
} // namespace

class TestBundlePlace : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir.reset(new QTemporaryDir);
        QVERIFY(QDir().mkpath(path("out")));
        takeProblems();
    }

    // Store and bundle by their paths; the bundle, an archive, and links to what is told stand there.
    void apart_data()
    {
        const DataTable row([this](const QString &store, const QString &bundle, bool apart) {
            writeFiles(path("out/" + rge), {{"profile/Inbox", "x"}, {"a.olm", "x"}});
            writeFiles(path("out/" + rge + ".old"), before);
            writeFiles(path("outside"), {{"Inbox", "x"}});
            QVERIFY(QFile::link(path("out/" + rge), path("to bundle")));
            QVERIFY(QFile::link(path("out/" + rge + "/profile"), path("to profile")));
            QVERIFY(QFile::link(path("outside"), path("out/Main Identity.mbox")));
            QCOMPARE(BundlePlace::conflict(path(store), path(bundle)).isEmpty(), apart);
            QCOMPARE(readFiles(path("out/" + rge)).size(), 2);
        });
        row("beside", "outside", "out/" + rge, true);
        row("the bundle", "out/" + rge, "out/" + rge, false);
        row("in it", "out/" + rge + "/profile", "out/" + rge, false);
        row("archive in it", "out/" + rge + "/a.olm", "out/" + rge, false);
        row("in the one aside", "out/" + rge + ".old/Mail", "out/" + rge, false);
        row("holds it", "out", "out/" + rge, false);
        row("link to it", "to bundle", "out/" + rge, false);
        row("link into it", "to profile", "out/" + rge, false);
        row("by another way", "out/../to bundle/profile", "out/" + rge, false);
        row("the bundle is a link to it", "outside", "out/Main Identity.mbox", false);
        row("through such a link", "out/Main Identity.mbox/Inbox", "out/Main Identity.mbox", false);
        row("output folder in it, no bundle", "out", "out/new/" + rge, true);
    }

    void apart() { checkRow(); }

    // What stands at the bundle's place and beside it, before a save that replaces, in it, and at its end.
    void replaced_data()
    {
        const DataTable row([this](const FileMap &there, const FileMap &aside, bool whole,
                                   const FileMap &asideInIt, bool staysAside) {
            writeFiles(bundle(), there);
            writeFiles(old(), aside);
            BundlePlace place;
            QCOMPARE(place.open(bundle(), BundlePlace::Old::Replace), QString());
            QVERIFY(!BundlePlace::isThere(bundle()));
            QCOMPARE(readFiles(old()), asideInIt);
            QCOMPARE(place.makeFolder(bundle() + "/Mail"), 0);
            writeFiles(bundle(), after);
            place.sync([] { return true; });
            QCOMPARE(place.finish(whole), whole);
            QCOMPARE(readFiles(bundle()), after);
            QCOMPARE(readFiles(old()), staysAside ? asideInIt : FileMap());
            QCOMPARE(takeProblems().join("").contains(old()), staysAside);
            QCOMPARE(
                QDir(path("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
                staysAside ? 2 : 1);
        });
        row("nothing there", FileMap(), FileMap(), true, FileMap(), false);
        row("whole", before, FileMap(), true, before, false);
        row("not whole", before, FileMap(), false, before, true);
        row("an unfinished one", FileMap{{"cut", "x"}}, before, true, before, false);
        row("an unfinished one, not whole again", FileMap{{"cut", "x"}}, before, false, before, true);
        row("killed before the first write", FileMap(), before, true, before, false);
    }

    void replaced() { checkRow(); }

    void notReplaced()
    {
        writeFiles(old(), before);
        BundlePlace place;
        QCOMPARE(place.open(bundle(), BundlePlace::Old::Refuse), QString());
        QCOMPARE(place.makeFolder(bundle()), 0);
        QVERIFY(place.finish(true));
        QCOMPARE(readFiles(old()), before); // nobody has given it up
        QVERIFY(takeProblems().value(0).contains(old()));
        QVERIFY(!place.open(bundle(), BundlePlace::Old::Refuse).isEmpty());
        QVERIFY(!place.isOpen() && !BundlePlace::isThere(lockFile()));
    }

    void oneAtATime()
    {
        BundlePlace one;
        BundlePlace other;
        writeFiles(path("out"), {{".Main Identity.lock", ""}}); // left by one that was killed
        QCOMPARE(one.open(bundle(), BundlePlace::Old::Replace), QString());
        QVERIFY(!other.open(bundle(), BundlePlace::Old::Replace).isEmpty());
        QVERIFY(BundlePlace::isThere(lockFile()));
        QVERIFY(QDir().mkpath(bundle()));
        QCOMPARE(one.makeFolder(bundle() + "/Mail"), EEXIST); // whoever made it, it is not ours
        one.finish(false);
        QVERIFY(!BundlePlace::isThere(lockFile()));
        QCOMPARE(other.open(bundle(), BundlePlace::Old::Replace), QString());
        other.finish(false);
        QCOMPARE(::mkfifo(QFile::encodeName(lockFile()).constData(), 0600), 0);
        QVERIFY(other.open(bundle(), BundlePlace::Old::Replace).contains(lockFile()));
        QVERIFY(BundlePlace::isThere(old()));
    }

    // What is taken away in the save, and what then stands in its place.
    void takenAway_data()
    {
        const DataTable row([this](const QString &gone, const QString &comes) {
            BundlePlace place;
            QCOMPARE(place.open(bundle(), BundlePlace::Old::Replace), QString());
            QCOMPARE(place.makeFolder(bundle() + "/Mail"), 0);
            QVERIFY(QFile::rename(path(gone), path("gone")));
            QVERIFY(comes.isEmpty() || QDir().mkpath(path(comes)));
            QVERIFY(place.makeFolder(bundle() + "/Mail") != 0);
            QVERIFY(!place.finish(true));
            QVERIFY(takeUnwritten());
            QVERIFY(takeProblems().value(0).contains(bundle()));
        });
        row("folder", "out", "");
        row("bundle", "out/" + rge, "");
        row("another folder comes", "out", "out");
        row("another bundle comes", "out/" + rge, "out/" + rge);
    }

    void takenAway() { checkRow(); }

private:
    QString path(const QString &name) const { return m_dir->filePath(name); }
    QString bundle() const { return path("out/" + rge); }
    QString old() const { return BundlePlace::oldPath(bundle()); }
    QString lockFile() const { return path("out/.Main Identity.lock"); }

    QScopedPointer<QTemporaryDir> m_dir;
};

QTEST_GUILESS_MAIN(TestBundlePlace)
#include "test_bundle_place.moc"
