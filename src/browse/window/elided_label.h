#pragma once

#include <QLabel>

/// A label of one line of foreign text that gives way where room is short: it loses the text's end and shows all of it
/// as a tool tip.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
