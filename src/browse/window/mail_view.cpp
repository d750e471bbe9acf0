#include "browse/window/mail_view.h"

#include "platform/window/focus_frame.h"
#include "platform/window/open_url.h"

#include <QAction>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QWebFrame>
#include <QWebPage>
#include <QWebSettings>

namespace
{
// The answer to a request that is refused: nothing is looked up, connected or read.
class RefusedReply : public QNetworkReply
{
public:
    RefusedReply(QNetworkAccessManager::Operation operation, const QNetworkRequest &request, QObject *parent)
        : QNetworkReply(parent)
    {
        setOperation(operation);
        setRequest(request);
        setUrl(request.url());
        setError(ContentAccessDenied, QStringLiteral("A message loads nothing."));
        setOpenMode(ReadOnly);
        setFinished(true);
        QTimer::singleShot(0, this, [this] {
            emit errorOccurred(ContentAccessDenied);
            emit finished();
        });
    }
    void abort() override {}

protected:
    qint64 readData(char *, qint64) override { return -1; }
};

// Loads what a message carries itself and refuses everything else.
class MailAccess : public QNetworkAccessManager
{
public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *outgoing) override
    {
        if (operation == GetOperation && mayLoad(request.url()))
            return QNetworkAccessManager::createRequest(operation, request, outgoing);
        return new RefusedReply(operation, request, this);
    }
};

class MailPage : public QWebPage
{
public:
    using QWebPage::QWebPage;

protected:
    // Only the text itself, given by setHtml, and what it carries itself may fill a frame; a redirect may not.
    bool acceptNavigationRequest(QWebFrame *frame, const QNetworkRequest &request,
                                 NavigationType type) override
    {
        if (type == NavigationTypeLinkClicked)
            return QWebPage::acceptNavigationRequest(frame, request, type);
        return request.url() == QUrl(QStringLiteral("about:blank")) || mayLoad(request.url());
    }
    QWebPage *createWindow(WebWindowType) override { return nullptr; }
    QObject *createPlugin(const QString &, const QUrl &, const QStringList &, const QStringList &) override
    {
        return nullptr;
    }
    QString chooseFile(QWebFrame *, const QString &) override { return {}; }
    void javaScriptAlert(QWebFrame *, const QString &) override {}
    bool javaScriptConfirm(QWebFrame *, const QString &) override { return false; }
    bool javaScriptPrompt(QWebFrame *, const QString &, const QString &, QString *) override { return false; }
};

// Columns in columns, and flexible boxes that stand in a column or stretch, are laid out anew at each level, which
// takes a short page hours. The view's own sheet goes over the message's, however that spells it.
const char viewSheet[] = "* { -webkit-columns: auto auto !important; -webkit-column-count: auto !important; "
                         "-webkit-column-width: auto !important; flex-flow: row wrap !important; "
                         "align-items: flex-start !important; "
                         "align-self: auto !important; -webkit-box-orient: horizontal !important; "
                         "-webkit-box-align: start !important; }";

void closeDoors(QWebSettings *settings)
{
    for (const QWebSettings::WebAttribute attribute : {QWebSettings::JavascriptEnabled,
                                                       QWebSettings::JavaEnabled,
                                                       QWebSettings::PluginsEnabled,
                                                       QWebSettings::JavascriptCanOpenWindows,
                                                       QWebSettings::JavascriptCanCloseWindows,
                                                       QWebSettings::JavascriptCanAccessClipboard,
                                                       QWebSettings::DeveloperExtrasEnabled,
                                                       QWebSettings::DnsPrefetchEnabled,
                                                       QWebSettings::OfflineStorageDatabaseEnabled,
                                                       QWebSettings::OfflineWebApplicationCacheEnabled,
                                                       QWebSettings::LocalStorageEnabled,
                                                       QWebSettings::LocalContentCanAccessRemoteUrls,
                                                       QWebSettings::LocalContentCanAccessFileUrls,
                                                       QWebSettings::HyperlinkAuditingEnabled,
                                                       QWebSettings::WebGLEnabled,
                                                       QWebSettings::CSSRegionsEnabled,
                                                       QWebSettings::NotificationsEnabled,
                                                       QWebSettings::MediaSourceEnabled,
                                                       QWebSettings::MediaEnabled,
                                                       QWebSettings::FullScreenSupportEnabled})
        settings->setAttribute(attribute, false);
    settings->setAttribute(QWebSettings::PrivateBrowsingEnabled, true);
    settings->setThirdPartyCookiePolicy(QWebSettings::AlwaysBlockThirdPartyCookies);
}
} // namespace

MailView::MailView(QWidget *parent) : QWebView(parent)
{
    auto *page = new MailPage(this);
    page->setNetworkAccessManager(new MailAccess(page));
    page->setLinkDelegationPolicy(QWebPage::DelegateAllLinks);
    page->setForwardUnsupportedContent(false);
    closeDoors(page->settings());
    // A message's own colours reckon with a white page, whatever the desktop's theme. They are the view's, as it
    // gives its own to the page whenever the theme's change.
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::white);
    setPage(page);
    setPalette(colours);
    page->setPalette(colours);
    page->settings()->setUserStyleSheetUrl(QUrl(QStringLiteral("data:text/css;charset=utf-8;base64,") +
                                                QString::fromLatin1(QByteArray(viewSheet).toBase64())));
    page->settings()->setFontFamily(QWebSettings::StandardFont, font().family());
    setAcceptDrops(false);
    // The page's menu would offer to open and to download.
    setContextMenuPolicy(Qt::ActionsContextMenu);
    addPageAction(tr("&Copy"), QWebPage::Copy);
    addPageAction(tr("Select &All"), QWebPage::SelectAll);
    connect(this, &QWebView::linkClicked, this, [](const QUrl &url) {
        if (mayOpen(url))
            openUrl(url);
    });
}

void MailView::focusInEvent(QFocusEvent *event)
{
    QWebView::focusInEvent(event);
    update(); // its frame
}

void MailView::focusOutEvent(QFocusEvent *event)
{
    QWebView::focusOutEvent(event);
    update();
}

void MailView::paintEvent(QPaintEvent *event)
{
    QWebView::paintEvent(event);
    QPainter painter(this);
    if (hasFocus())
        drawFocusFrame(&painter, rect(), palette().color(QPalette::Highlight));
}

void MailView::addPageAction(const QString &text, int action)
{
    auto *item = new QAction(text, this);
    connect(item, &QAction::triggered, this,
            [this, action] { triggerPageAction(static_cast<QWebPage::WebAction>(action)); });
    addAction(item);
}

bool mayLoad(const QUrl &url)
{
    if (url.scheme() != QLatin1String("data"))
        return false;
    // A page or drawing inside a link would be laid out without the limits of the message's text.
    const QString type = url.path().section(QLatin1Char(','), 0, 0).trimmed().toLower();
    return !type.contains(QLatin1String("html")) && !type.contains(QLatin1String("xml"));
}

bool mayOpen(const QUrl &url)
{
    const QString scheme = url.scheme();
    return url.isValid() && (scheme == QLatin1String("http") || scheme == QLatin1String("https") ||
                             scheme == QLatin1String("mailto"));
}
