#pragma once

#include <QLineEdit>

/// A line that shows a path. While it hasn't the focus, a path that is too long for it loses its
/// beginning, as its end tells most; with the focus it scrolls as any line does.
class PathEdit : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

protected:
    void paintEvent(QPaintEvent *event) override;
};
