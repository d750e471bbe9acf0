#include "app/support_links.h"

#include "app/settings_plist.h"
#include "app/shared_state.h"

QUrl helpPage()
{
    return QUrl::fromLocalFile(HelpFilePath + QStringLiteral("/help/Velmora_Mail_Converter.htm"));
}

QUrl GetEmailSupport()
{
    const QString address = linkSetting(QStringLiteral("EmailToSupport"));
    return address.isEmpty() ? QUrl() : QUrl(QStringLiteral("mailto:") + address);
}

QUrl GetViewSupport()
{
    return QUrl(linkSetting(QStringLiteral("ViewSupportLink")));
}

QUrl GetGenerateTicket()
{
    return QUrl(linkSetting(QStringLiteral("SubmitEnquiryLink")));
}

QUrl GetKnowledgebase()
{
    return QUrl(linkSetting(QStringLiteral("KBLink")));
}
