#include "text/opera_accounts.h"

#include <QTemporaryFile>
#include <QtTest>

class TestOperaAccounts : public QObject
{
    Q_OBJECT

private slots:
    void account_data();
    void account();
    void names_data();
    void names();
    void missingFile();
};

void TestOperaAccounts::account_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("account");
    QTest::newRow("plain") << "/o/mail/store/account1/2009/1.mbs"
                           << "account1";
    QTest::newRow("the last one counts") << "/o/store/a/store/b/1.mbs"
                                         << "b";
    QTest::newRow("a longer name") << "/o/stores-old/a/1.mbs"
                                   << "a";
    QTest::newRow("trimmed") << "/o/store/ a b /1.mbs"
                             << "a b";
    QTest::newRow("empty component") << "/o/store//1.mbs"
                                     << "";
    QTest::newRow("nothing behind") << "/o/store"
                                    << "";
    QTest::newRow("no store") << "/o/x/1.mbs"
                              << "o";
}

void TestOperaAccounts::account()
{
    QFETCH(QString, path);
    QTEST(operaAccountOf(path), "account");
}

void TestOperaAccounts::names_data()
{
    QTest::addColumn<QByteArray>("ini");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QStringList>("scan");
    QTest::addColumn<QStringList>("save");
    const QByteArray filler100 = QByteArray("x=1\n").repeated(100);

    QTest::newRow("two accounts, taking turns")
        << QByteArray("[a]\nAccount Name=Work\r\n\n  [b]\n Account Name= B\xC3\xBCro \n")
        << QStringList{"a", "b", "a"} << QStringList{"Work", "B\u00fcro", "Work"}
        << QStringList{"Work", "B\u00fcro", "Work"};
    QTest::newRow("key in another case")
        << QByteArray("[Account1]\nAccount Name=Work\n") << QStringList{"account1"} << QStringList{"Work"}
        << QStringList{"account1"};
    QTest::newRow("no section: the name before it stays in a scan")
        << QByteArray("[a]\nAccount Name=Work\n") << QStringList{"x", "a", "y", "a"}
        << QStringList{"x", "Work", "Work", "Work"} << QStringList{"x", "Work", "y", "Work"};
    QTest::newRow("a later section overrules in a scan")
        << QByteArray("[a]\nAccount Name=One\n[a]\nAccount Name=Two\n") << QStringList{"a"}
        << QStringList{"Two"} << QStringList{"One"};
    QTest::newRow("a later section without a name does not")
        << QByteArray("[a]\nAccount Name=One\n[a]\nx=1\n") << QStringList{"a"} << QStringList{"One"}
        << QStringList{"One"};
    QTest::newRow("empty name is passed over in a scan")
        << QByteArray("[a]\nAccount Name=\nAccount Name=Two\n") << QStringList{"a"} << QStringList{"Two"}
        << QStringList{"a"};
    QTest::newRow("text before the mark")
        << QByteArray("[a]\nMy Account Name=One\n[b]\nMy Account Name=\nAccount Name=Two\n")
        << QStringList{"a", "b"} << QStringList{"My", "Two"} << QStringList{"One", "b"};
    QTest::newRow("the mark twice") << QByteArray("[a]\nAccount Name=One Account Name=Two\n")
                                    << QStringList{"a"} << QStringList{"One"}
                                    << QStringList{"One Account Name=Two"};
    QTest::newRow("line 101 of the section") << "[a]\n" + filler100 + "Account Name=Far\n"
                                             << QStringList{"a"} << QStringList{"Far"} << QStringList{"Far"};
    QTest::newRow("line 102 of the section") << "[a]\n" + filler100 + "x=1\nAccount Name=Far\n"
                                             << QStringList{"a"} << QStringList{"a"} << QStringList{"a"};
    QTest::newRow("a section runs on into the next")
        << QByteArray("[a]\nx=1\n[b]\nAccount Name=B\n") << QStringList{"a", "b"} << QStringList{"B", "B"}
        << QStringList{"B", "B"};
    QTest::newRow("a section inside a searched one is not seen")
        << "[a]\nx=1\n[a]\n" + filler100 + "Account Name=A\n"
        << QStringList{"a"} << QStringList{"a"} << QStringList{"a"};
    QTest::newRow("text behind the key") << QByteArray("[a] ; mine\nAccount Name=Work\n") << QStringList{"a"}
                                         << QStringList{"Work"} << QStringList{"Work"};
    QTest::newRow("empty key") << QByteArray("[]\nAccount Name=None\n[a]\nAccount Name=Work\n")
                               << QStringList{"", "a", ""} << QStringList{"", "Work", "Work"}
                               << QStringList{"", "Work", "None"};
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF[a]\nAccount Name=Work") << QStringList{"a"}
                                     << QStringList{"Work"} << QStringList{"Work"};
}

void TestOperaAccounts::names()
{
    QFETCH(QByteArray, ini);
    QFETCH(QStringList, keys);
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(ini);
    file.close();
    OperaAccounts scan(file.fileName(), scanAccounts);
    OperaAccounts save(file.fileName(), saveAccounts);
    QStringList scanned;
    QStringList saved;
    for (const QString &key : keys) {
        scanned.append(scan.nameOf(key));
        saved.append(save.nameOf(key));
    }
    QTEST(scanned, "scan");
    QTEST(saved, "save");
}

void TestOperaAccounts::missingFile()
{
    for (const QString &path : {QString(), QString("/nowhere/accounts.ini")}) {
        OperaAccounts scan(path, scanAccounts);
        QCOMPARE(scan.nameOf("a"), QString("a"));
        QCOMPARE(scan.nameOf("b"), QString("b")); // nothing is carried over
        QCOMPARE(scan.nameOf(""), QString("b"));
    }
}

QTEST_APPLESS_MAIN(TestOperaAccounts)
#include "test_opera_accounts.moc"
