#pragma once

#include "browse/preview.h"

#include <QTextBrowser>

/// The pane of a message's headers. Its height is fixed: empty lines are drawn low, and where a text still does not
/// fit, a mark at the lower edge says so; wheel and keys scroll, a tool tip shows all. All of it can be copied.
class HeaderPane : public QTextBrowser
{
    Q_OBJECT

public:
    explicit HeaderPane(QWidget *parent = nullptr);

    /// Appends a line as QTextEdit::append does, but foreign text is never taken as markup.
    void appendLine(const HeaderLine &line);
    /// To be called behind the last line: draws empty lines low and shows the beginning.
    void finish();

protected:
    bool viewportEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void copyAll() const;
};
