#include "app/settings_plist.h"
#include "browse/mail_view_pane.h"
#include "platform/open_url.h"

#include <QDesktopServices>
#include <QUrl>

QString linkSetting(const QString &)
{
    return QString();
}

void openUrl(const QUrl &url)
{
    if (!url.isEmpty())
        QDesktopServices::openUrl(url);
}

MailView::MailView(QWidget *parent) : QWebView(parent) {}
