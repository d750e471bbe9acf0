#include "app/window/main_window.h"

#include "app/support_links.h"
#include "dialogs/about_dialog.h"
#include "dialogs/preferences_dialog.h"
#include "platform/window/open_url.h"

void QConverterMainWindow::createPreferences()
{
    m_pPreferences = new PreferencesDialog(this);
}

void QConverterMainWindow::createAbout()
{
    m_pAbout = new AboutDlg(this);
}

void QConverterMainWindow::OpenHelp()
{
    openUrl(helpPage());
}

void QConverterMainWindow::OnEmailSupport()
{
    openUrl(GetEmailSupport());
}

void QConverterMainWindow::OnViewSupport()
{
    openUrl(GetViewSupport());
}

void QConverterMainWindow::OnGenerateTicket()
{
    openUrl(GetGenerateTicket());
}

void QConverterMainWindow::OnKnowledgeBase()
{
    openUrl(GetKnowledgebase());
}

void QConverterMainWindow::aboutVelmoraKestrin()
{
    m_pAbout->setModal(true);
    m_pAbout->show();
}

void QConverterMainWindow::OnPreferences()
{
    m_pPreferences->setModal(true);
    m_pPreferences->show();
}
