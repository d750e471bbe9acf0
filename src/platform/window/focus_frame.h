#pragma once

#include <QPainter>
#include <QRect>

/// Draws the frame of what the keys act on, so that it is seen beside a selection in the same colour; that of the
/// styles is faint.
inline void drawFocusFrame(QPainter *painter, const QRect &place, const QColor &colour)
{
    painter->save();
    painter->setPen(QPen(colour, 2));
    painter->drawRect(place.adjusted(1, 1, -1, -1));
    painter->restore();
}
