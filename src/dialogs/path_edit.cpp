#include "dialogs/path_edit.h"

#include <QPainter>
#include <QStyleOptionFrame>

namespace
{
constexpr int textMargin = 2; ///< pixels between the frame and the text, as the toolkit has it
}

void PathEdit::paintEvent(QPaintEvent *event)
{
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    const QRect place = style()
                            ->subElementRect(QStyle::SE_LineEditContents, &panel, this)
                            .adjusted(textMargin, 0, -textMargin, 0);
    if (hasFocus() || fontMetrics().horizontalAdvance(text()) <= place.width()) {
        QLineEdit::paintEvent(event);
        return;
    }
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &panel, &painter, this);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideLeft, place.width()));
}
