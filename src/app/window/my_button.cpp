#include "app/window/my_button.h"

#include "platform/window/focus_frame.h"

#include <QBitmap>

constexpr int iconPixels = 32;

MyButton::MyButton(QWidget *parent) : QToolButton(parent)
{
    setMouseTracking(true);
    setCheckable(true);
    setIconSize(QSize(iconPixels, iconPixels));
    // The picture is the whole button: no frame that would stay pressed after a click.
    setStyleSheet(QStringLiteral("QToolButton {border: none; background: transparent;}"));
}

void MyButton::setPicture(const QString &image)
{
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    setIcon(QIcon(image));
    setCursor(Qt::PointingHandCursor);
    // The icon is centred; the mask must be where the picture is, in the button's own units at any density.
    const QPixmap picture = icon().pixmap(iconSize());
    const QSize size = picture.size() / picture.devicePixelRatio();
    QRegion opaque(QBitmap(picture.mask().scaled(size)));
    opaque.translate((minimumWidth() - size.width()) / 2, (minimumHeight() - size.height()) / 2);
    setMask(opaque);
}

void MyButton::enterEvent(QEvent *event)
{
    QToolButton::enterEvent(event);
    emit ChangePixmap();
}

void MyButton::leaveEvent(QEvent *event)
{
    QToolButton::leaveEvent(event);
    emit OnUpdatePixmap();
}

// The picture shows where the keyboard is, and where it is always the same, the frame does.
void MyButton::focusInEvent(QFocusEvent *event)
{
    QToolButton::focusInEvent(event);
    emit ChangePixmap();
    clearMask(); // it would leave no room for the frame
}

void MyButton::paintEvent(QPaintEvent *event)
{
    QToolButton::paintEvent(event);
    QPainter painter(this);
    if (hasFocus())
        drawFocusFrame(&painter, rect(), palette().color(QPalette::WindowText));
}

void MyButton::focusOutEvent(QFocusEvent *event)
{
    QToolButton::focusOutEvent(event);
    emit OnUpdatePixmap();
}
