#include "browse/window/elided_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {qMin(fontMetrics().averageCharWidth() * 4, sizeHint().width()),
            QLabel::minimumSizeHint().height()};
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const bool whole = fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       whole ? QString() : Qt::convertFromPlainText(text(), Qt::WhiteSpaceNormal), this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QString line = QString(text()).replace(QLatin1Char('\n'), QLatin1Char(' '));
    style()->drawItemText(
        &painter, contentsRect(),
        static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())) | Qt::TextSingleLine,
        palette(), isEnabled(), fontMetrics().elidedText(line, Qt::ElideRight, contentsRect().width()),
        foregroundRole());
}
