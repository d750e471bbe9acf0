#include "platform/window/open_url.h"

#include <QDesktopServices>
#include <QUrl>

void openUrl(const QUrl &url)
{
    if (!url.isEmpty())
        QDesktopServices::openUrl(url);
}
