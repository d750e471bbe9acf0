#include "browse/mail_view_pane.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QWebElement>
#include <QWebFrame>
#include <QtTest>

namespace
{
// Waits until whatever the page asks for would have arrived.
void settle()
{
    QTest::qWait(300);
}
} // namespace

class TestMailView : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void loadsNothing_data();
    void loadsNothing();
    void listenerNoticesALoad();
    void scriptsDoNotRun();
    void clickIsHandedOver();
    void showsWhatItCarries();
    void refusesDropsAndMenu();
    void allowList_data();
    void allowList();

private:
    QString address() const { return QString("http://127.0.0.1:%1/").arg(m_server->serverPort()); }
    int connections() const { return m_connections; }

    QScopedPointer<QTcpServer> m_server;
    int m_connections = 0;
};

void TestMailView::init()
{
    m_server.reset(new QTcpServer);
    m_connections = 0;
    QVERIFY(m_server->listen(QHostAddress::LocalHost));
    connect(m_server.data(), &QTcpServer::newConnection, this, [this] {
        ++m_connections;
        m_server->nextPendingConnection()->close();
    });
}

// %1 is the listener's address.
void TestMailView::loadsNothing_data()
{
    QTest::addColumn<QString>("html");

    QTest::newRow("picture") << "<img src='%1a.png'>";
    QTest::newRow("picture set") << "<img srcset='%1a.png 1x'>";
    QTest::newRow("background") << "<body background='%1a.png'>x";
    QTest::newRow("style sheet") << "<link rel='stylesheet' href='%1a.css'>x";
    QTest::newRow("import") << "<style>@import url(%1a.css);</style>x";
    QTest::newRow("font")
        << "<style>@font-face{font-family:f;src:url(%1f.ttf)} p{font-family:f}</style><p>x</p>";
    QTest::newRow("picture of a style") << "<p style='background:url(%1a.png)'>x</p>";
    QTest::newRow("script") << "<script src='%1a.js'></script>x";
    QTest::newRow("frame") << "<iframe src='%1'></iframe>";
    QTest::newRow("frame set") << "<frameset><frame src='%1'></frameset>";
    QTest::newRow("object") << "<object data='%1a' type='text/html'></object>";
    QTest::newRow("plug-in") << "<embed src='%1a' type='application/x-shockwave-flash'>";
    QTest::newRow("sound and film")
        << "<audio autoplay src='%1a'></audio><video autoplay src='%1a' poster='%1b'></video>";
    QTest::newRow("refresh") << "<meta http-equiv='refresh' content='0;url=%1'>x";
    QTest::newRow("base") << "<base href='%1'><img src='a.png'>";
    QTest::newRow("icon and prefetch") << "<link rel='icon' href='%1i'><link rel='prefetch' href='%1p'>x";
    QTest::newRow("drawing") << "<svg><image xlink:href='%1a.png' width='9' height='9'/></svg>";
    QTest::newRow("frame inside carried text")
        << "<iframe src=\"data:text/html,<img src='%1a.png'>\"></iframe>";
    QTest::newRow("script link") << "<iframe src=\"javascript:location='%1'\"></iframe>";
    QTest::newRow("form") << "<body onload='document.forms[0].submit()'><form action='%1'></form>";
}

void TestMailView::loadsNothing()
{
    QFETCH(QString, html);
    MailView view;
    view.show();
    view.setHtml(html.arg(address()), QUrl());
    settle();
    QCOMPARE(connections(), 0);
    QVERIFY(view.url().isEmpty() || view.url() == QUrl("about:blank"));
}

// The listener would notice: an ordinary view does load.
void TestMailView::listenerNoticesALoad()
{
    QWebView view;
    view.setHtml("<img src='" + address() + "a.png'>", QUrl());
    QTRY_VERIFY(connections() > 0);
}

void TestMailView::scriptsDoNotRun()
{
    MailView view;
    view.setHtml("<p id='p'>before</p><script>document.getElementById('p').innerHTML = 'after'</script>"
                 "<img src='x:' onerror=\"document.getElementById('p').innerHTML = 'after'\">",
                 QUrl());
    settle();
    QCOMPARE(view.page()->mainFrame()->findFirstElement("#p").toPlainText(), QString("before"));
}

// A click leaves the page as it is and goes to whoever opens links.
void TestMailView::clickIsHandedOver()
{
    MailView view;
    QObject::disconnect(&view, &QWebView::linkClicked, nullptr, nullptr); // no browser in a test
    QSignalSpy clicked(&view, &QWebView::linkClicked);
    view.resize(300, 200);
    view.show();
    view.setHtml("<a target='_blank' href='" + address() + "'>a link</a>", QUrl());
    settle();
    const QRect link = view.page()->mainFrame()->findFirstElement("a").geometry();
    QTest::mouseClick(&view, Qt::LeftButton, Qt::NoModifier, link.center());
    settle();
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).toUrl(), QUrl(address()));
    QCOMPARE(connections(), 0);
    QCOMPARE(view.page()->mainFrame()->toPlainText(), QString("a link"));
}

void TestMailView::showsWhatItCarries()
{
    MailView view;
    view.setHtml("<img src='data:image/gif;base64,R0lGODlhAgADAIAAAAAAAP///ywAAAAAAgADAAACAkQBADs='>",
                 QUrl());
    settle();
    QCOMPARE(view.page()->mainFrame()->findFirstElement("img").geometry().size(), QSize(2, 3));
}

void TestMailView::refusesDropsAndMenu()
{
    MailView view;
    QVERIFY(!view.acceptDrops());
    QCOMPARE(view.contextMenuPolicy(), Qt::NoContextMenu);
}

void TestMailView::allowList_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("loads");
    QTest::addColumn<bool>("opens");

    const auto row = [](const char *url, bool loads, bool opens) {
        QTest::newRow(url) << url << loads << opens;
    };
    row("http://example.org/", false, true);
    row("HTTPS://example.org/a?b#c", false, true);
    row("mailto:a@example.org?subject=x", false, true);
    row("data:text/plain,x", true, false);
    row("file:///etc/passwd", false, false);
    row("javascript:alert(1)", false, false);
    row("ftp://example.org/", false, false);
    row("qrc:/images/img_Folder.png", false, false);
    row("about:blank", false, false);
    row("x-apple.systempreferences:a", false, false);
    row("httpx://example.org/", false, false);
    row("//example.org/", false, false);
    row("/usr/bin/true", false, false);
    row("", false, false);
}

void TestMailView::allowList()
{
    QFETCH(QString, url);
    QTEST(mayLoad(QUrl(url)), "loads");
    QTEST(mayOpen(QUrl(url)), "opens");
}

QTEST_MAIN(TestMailView)
#include "test_mail_view.moc"
