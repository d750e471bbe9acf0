#include "browse/mail_view_pane.h"

MailView::MailView(QWidget *parent) : QWebView(parent) {}
