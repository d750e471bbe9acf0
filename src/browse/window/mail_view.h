#pragma once

#include <QWebView>

/// The web view of the preview. A message is foreign: no scripts, no plug-ins, no local storage, no local files,
/// no network; only data: URLs are loaded, and of them no pages or drawings. Text can be copied. A link that is clicked opens in the user's browser or mail program if
/// it is http, https or mailto, and does nothing otherwise.
class MailView : public QWebView
{
    Q_OBJECT

public:
    explicit MailView(QWidget *parent = nullptr);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void addPageAction(const QString &text, int action);
};

/// True for a URL that a message may have loaded: only data:, and neither HTML nor XML.
bool mayLoad(const QUrl &url);
/// True for a URL that a click in a message may open: http, https and mailto.
bool mayOpen(const QUrl &url);
