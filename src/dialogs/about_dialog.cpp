#include "dialogs/about_dialog.h"

#include "app/settings_plist.h"
#include "platform/system_info.h"
#include "platform/window/text_fit.h"

namespace
{
constexpr qreal largestPoints = 12;
}

AboutDlg::AboutDlg(QWidget *parent) : QDialog(parent)
{
    QFont desktop = font();
    desktop.setPointSizeF(qMin(desktop.pointSizeF(), largestPoints)); // what the fixed form has room for
    setFont(desktop);
    setupUi(this);
    LabelPixmap->setPixmap(QPixmap(QStringLiteral(":/images/img_About.png")));
    ProductVersionLabel->setText(QStringLiteral("2.0.0.1")); // of the window, whatever the package's is
    connect(OKButton, &QPushButton::clicked, this, &QDialog::accept);
    GetSystemInfo();
    GetSUpport();
}

void AboutDlg::GetSystemInfo()
{
    const SystemInfo info = systemInfo();
    OSLabel->setText(info.name);
    VersionLabel->setText(info.version);
}

void AboutDlg::GetSUpport()
{
    const QString text = linkSetting(QStringLiteral("SupText"));
    const QString link = linkSetting(QStringLiteral("SupLink"));
    if (text.isEmpty() || link.isEmpty()) {
        TicketLabel->hide();
        return;
    }
    TicketLabel->setText(QStringLiteral("<a href=\"%1\">%2</a>")
                             .arg(link.toHtmlEscaped(), tr(text.toUtf8().constData()).toHtmlEscaped()));
    TicketLabel->setFont(lucidaFont(12));
    TicketLabel->setOpenExternalLinks(true);
}
