#include "platform/window/text_fit.h"

#include <QLabel>
#include <QPushButton>

namespace
{
const char face[] = "Lucida Grande";
const char standIn[] = "DejaVu Sans";
constexpr int buttonPadding = 6; ///< pixels left and right of a button's text
constexpr qreal smallestPoints = 7;
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
        const int needed = label->sizeHint().width();
        place.setWidth(qMax(place.width(), qMin(widest, needed)));
        label->setWordWrap(needed > widest);
    }
    const int needed = label->wordWrap() ? label->heightForWidth(place.width()) : label->sizeHint().height();
    const int missing = needed - place.height();
    if (missing > 0)
        place.adjust(0, -(missing / 2), 0, missing - missing / 2);
    label->setGeometry(place);
}

void shrinkFont(QWidget *widget, const std::function<bool()> &fits)
{
    QFont font = widget->font();
    while (!fits() && font.pointSizeF() > smallestPoints) {
        font.setPointSizeF(font.pointSizeF() - 1);
        widget->setFont(font);
    }
}

int fitToText(QAbstractButton *button)
{
    QRect place = button->geometry();
    const int low = qMax(0, button->fontMetrics().height() - place.height());
    place.adjust(0, -(low / 2), 0, low - low / 2);
    const bool push = qobject_cast<QPushButton *>(button);
    const int textWidth = button->fontMetrics().horizontalAdvance(button->text());
    const int needed = push ? textWidth + 2 * buttonPadding : button->sizeHint().width();
    const int missing = qMax(0, needed - place.width());
    if (push)
        place.setLeft(place.left() - missing);
    else
        place.setRight(place.right() + missing);
    button->setGeometry(place);
    return missing;
}
