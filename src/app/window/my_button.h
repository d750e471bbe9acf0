#pragma once

#include <QToolButton>

/// A tool button of the main window: tells when the pointer or the keyboard's focus comes and goes, so that its
/// picture can change.
class MyButton : public QToolButton
{
    Q_OBJECT

public:
    explicit MyButton(QWidget *parent = nullptr);

    /// Shows the picture, and takes its opaque part as the part of the button that can be seen and clicked.
    void setPicture(const QString &image);

signals:
    void ChangePixmap();   ///< the pointer has entered, or the focus has come
    void OnUpdatePixmap(); ///< the pointer or the focus has left

protected:
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
