#include "platform/text_fit.h"

#include <QLabel>

namespace
{
const char face[] = "Lucida Grande";
const char standIn[] = "DejaVu Sans";
constexpr int rightMargin = 4; ///< pixels kept free at the parent's right edge
} // namespace

void setFontFallback()
{
    QFont::insertSubstitution(QLatin1String(face), QLatin1String(standIn));
}

QFont lucidaFont(int points)
{
    return QFont(QLatin1String(face), points);
}

void fitToText(QLabel *label)
{
    QRect place = label->geometry();
    if (!label->wordWrap()) {
        const int widest = label->parentWidget()->width() - place.left() - rightMargin;
        place.setWidth(qMax(place.width(), qMin(widest, label->sizeHint().width())));
    }
    const int needed = label->wordWrap() ? label->heightForWidth(place.width()) : label->sizeHint().height();
    const int missing = needed - place.height();
    if (missing > 0)
        place.adjust(0, -(missing / 2), 0, missing - missing / 2);
    label->setGeometry(place);
}
