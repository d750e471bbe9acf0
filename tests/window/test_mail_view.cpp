#include "browse/window/mail_view.h"
#include "data_table.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QWebElement>
#include <QWebFrame>

namespace
{
// Waits until whatever the page asks for would have arrived.
void settle()
{
    QTest::qWait(300);
}

// Counts who connects to it.
struct Listener {
    Listener()
    {
        QObject::connect(&server, &QTcpServer::newConnection, [this] {
            ++connections;
            server.nextPendingConnection()->close();
        });
        server.listen(QHostAddress::LocalHost);
    }
    QString address() const { return QString("http://127.0.0.1:%1/").arg(server.serverPort()); }

    QTcpServer server;
    int connections = 0;
};

// What the toolkit shows without our guards.
class OpenView : public QWebView
{
public:
    OpenView() { settings()->setAttribute(QWebSettings::PluginsEnabled, true); }
};
} // namespace

class TestMailView : public QObject
{
    Q_OBJECT

private slots:
    // %1 is the listener's address. `needs` must be true in scripts, or the toolkit lacks what the page uses.
    // Each page does connect in a view without guards.
    void loadsNothing_data()
    {
        const DataTable row([](const QString &html, const QString &needs) {
            Listener open;
            OpenView openView;
            if (!openView.page()->mainFrame()->evaluateJavaScript("!!(" + needs + ")").toBool())
                QSKIP("the toolkit can't do this here");
            openView.show();
            openView.setHtml(html.arg(open.address()), QUrl());
            QTRY_VERIFY(open.connections > 0);

            Listener listener;
            MailView view;
            view.show();
            view.setHtml(html.arg(listener.address()), QUrl());
            settle();
            QCOMPARE(listener.connections, 0);
            QVERIFY(view.url().isEmpty() || view.url() == QUrl("about:blank"));
        });

        row("picture", "<img src='%1a.png'>", "true");
        row("style sheet", "<link rel='stylesheet' href='%1a.css'>x", "true");
        row("import", "<style>@import url(%1a.css);</style>x", "true");
        row("font", "<style>@font-face{font-family:f;src:url(%1f)} p{font-family:f}</style><p>x</p>", "true");
        row("script", "<script src='%1a.js'></script>x", "true");
        row("script that goes elsewhere", "<script>location='%1'</script>x", "true");
        row("web socket", "<script>new WebSocket('%1'.replace('http', 'ws'))</script>x", "window.WebSocket");
        row("frame", "<iframe src='%1'></iframe>", "true");
        row("object", "<object data='%1a' type='text/html'></object>", "true");
        row("embedded page", "<embed src='%1a' type='text/html'>", "true");
        row("sound", "<audio autoplay src='%1a.wav'></audio>", "new Audio().canPlayType('audio/wav')");
        row("film", "<video autoplay src='%1a.mp4' poster='%1b'></video>",
            "document.createElement('video').canPlayType('video/mp4')");
        row("refresh", "<meta http-equiv='refresh' content='0;url=%1'>x", "true");
        row("prefetch", "<link rel='prefetch' href='%1p'>x", "true");
        row("drawing", "<svg><image xlink:href='%1a.png' width='9' height='9'/></svg>", "true");
        row("frame in carried text", "<iframe src=\"data:text/html,<img src='%1a.png'>\"></iframe>", "true");
        row("script link", "<iframe src=\"javascript:parent.location='%1'\"></iframe>", "true");
        row("form", "<body onload='document.forms[0].submit()'><form action='%1'></form>", "true");
    }

    void loadsNothing() { checkRow(); }

    void scriptsDoNotRun()
    {
        const QString html = "<p id='p'>before</p><img src='x:' onerror=\"p.innerHTML += ' event'\">"
                             "<script>p.innerHTML += ' script'</script>";
        const auto shown = [](const QWebView &view) {
            return view.page()->mainFrame()->findFirstElement("#p").toPlainText();
        };
        OpenView openView;
        openView.setHtml(html, QUrl());
        QTRY_VERIFY(shown(openView).contains("script") && shown(openView).contains("event"));
        MailView view;
        view.setHtml(html, QUrl());
        settle();
        QCOMPARE(shown(view), QString("before"));
    }

    // A click leaves the page as it is and goes to whoever opens links.
    void clickIsHandedOver()
    {
        Listener listener;
        MailView view;
        QObject::disconnect(&view, &QWebView::linkClicked, nullptr, nullptr); // no browser in a test
        QSignalSpy clicked(&view, &QWebView::linkClicked);
        view.resize(300, 200);
        view.show();
        view.setHtml("<a target='_blank' href='" + listener.address() + "'>a link</a>", QUrl());
        settle();
        const QRect link = view.page()->mainFrame()->findFirstElement("a").geometry();
        QTest::mouseClick(&view, Qt::LeftButton, Qt::NoModifier, link.center());
        settle();
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(clicked.at(0).at(0).toUrl(), QUrl(listener.address()));
        QCOMPARE(listener.connections, 0);
        QCOMPARE(view.page()->mainFrame()->toPlainText(), QString("a link"));
    }

    void showsWhatItCarries()
    {
        MailView view;
        view.setHtml("<img src='data:image/gif;base64,R0lGODlhAgADAIAAAAAAAP///ywAAAAAAgADAAACAkQBADs='>",
                     QUrl());
        settle();
        QCOMPARE(view.page()->mainFrame()->findFirstElement("img").geometry().size(), QSize(2, 3));
    }

    void refusesDropsAndMenu()
    {
        MailView view;
        QVERIFY(!view.acceptDrops());
        QCOMPARE(view.contextMenuPolicy(), Qt::NoContextMenu);
    }

    void allowList()
    {
        for (const char *url :
             {"http://example.org/", "HTTPS://example.org/a?b#c", "mailto:a@example.org?subject=x"})
            QVERIFY2(mayOpen(QUrl(url)) && !mayLoad(QUrl(url)), url);
        QVERIFY(mayLoad(QUrl("data:text/plain,x")) && !mayOpen(QUrl("data:text/plain,x")));
        for (const char *url : {"file:///etc/passwd", "javascript:alert(1)", "ftp://example.org/",
                                "qrc:/images/img_Folder.png", "about:blank", "x-apple.systempreferences:a",
                                "httpx://example.org/", "//example.org/", "/usr/bin/true", ""})
            QVERIFY2(!mayOpen(QUrl(url)) && !mayLoad(QUrl(url)), url);
    }
};

QTEST_MAIN(TestMailView)
#include "test_mail_view.moc"
