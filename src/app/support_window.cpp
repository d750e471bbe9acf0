#include "app/main_window.h"

#include "app/settings_plist.h"
#include "app/shared_state.h"
#include "platform/open_url.h"

#include <QUrl>

namespace
{
void openSetting(const char *key)
{
    openUrl(QUrl(linkSetting(QLatin1String(key))));
}
} // namespace

void QConverterMainWindow::createPreferences() {}

void QConverterMainWindow::createAbout() {}

void QConverterMainWindow::OpenHelp()
{
    openUrl(QUrl::fromLocalFile(HelpFilePath + QStringLiteral("/help/Velmora_Mail_Converter.htm")));
}

void QConverterMainWindow::OnEmailSupport()
{
    openUrl(QUrl(QStringLiteral("mailto:") + linkSetting(QStringLiteral("EmailToSupport"))));
}

void QConverterMainWindow::OnViewSupport()
{
    openSetting("ViewSupportLink");
}

void QConverterMainWindow::OnGenerateTicket()
{
    openSetting("SubmitEnquiryLink");
}

void QConverterMainWindow::OnKnowledgeBase()
{
    openSetting("KBLink");
}

void QConverterMainWindow::aboutVelmoraKestrin() {}

void QConverterMainWindow::OnPreferences() {}
