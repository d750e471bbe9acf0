#include "save/safe_path.h"

#include <QtTest>

class TestSafePath : public QObject
{
    Q_OBJECT

private slots:
    void paths_data();
    void paths();
};

void TestSafePath::paths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("harmless");
    for (const char *same :
         {"", "/", "a", "/a/b", "//a//b/", "/a./.b/..c/d../...", "/Work/In.mbox/%2E", "/ . /.. "})
        QTest::newRow(same) << same << same;
    QTest::newRow("up") << "/../../etc"
                        << "/%2E%2E/%2E%2E/etc";
    QTest::newRow("only up") << ".."
                             << "%2E%2E";
    QTest::newRow("here") << "a/./b"
                          << "a/%2E/b";
    QTest::newRow("up at the end") << "/a/.."
                                   << "/a/%2E%2E";
    QTest::newRow("zero") << QString(QLatin1String("/a\0b/c", 6)) << "/a%00b/c";
    QTest::newRow("zero behind dots") << QString(QLatin1String("/..\0", 4)) << "/..%00";
}

void TestSafePath::paths()
{
    QFETCH(QString, path);
    QTEST(harmlessPath(path), "harmless");
}

QTEST_APPLESS_MAIN(TestSafePath)
#include "test_safe_path.moc"
