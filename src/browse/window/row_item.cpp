#include "browse/window/row_item.h"

#include "browse/window/picture_icon.h"
#include "platform/window/focus_frame.h"
#include "platform/window/text_fit.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHelpEvent>
#include <QPainter>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>

namespace
{
constexpr int rowSide = 32; ///< pixels
constexpr int deleteMilliseconds = 10;
constexpr int textColumn = 1;
constexpr int pathColumn = 2;

// What all rows share.
struct RowLook {
    QVariant icon = pictureIcon(QStringLiteral(":/images/img_Mail.png"));
    QFont font = lucidaFont(11);
    // Two lines of this font, on screens whose points are larger than the row was laid out for.
    QSize size{rowSide, qMax(rowSide, 2 * QFontMetrics(font).lineSpacing() + 2)};
};

// One line for the sender, one for all that follows.
void drawLines(QPainter *painter, const QRect &place, const QString &text, const QStyleOptionViewItem &option)
{
    const int end = text.indexOf(QChar::LineSeparator);
    const QString lines[] = {text.left(end), end < 0 ? QString() : text.mid(end + 1)};
    const int half = place.height() / 2;
    const int flags =
        static_cast<int>(QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter)) |
        Qt::AlignAbsolute | Qt::TextSingleLine | Qt::TextDontClip;
    for (int line = 0; line < 2; ++line) {
        // Each in its own direction, or what marks its cut would stand at its beginning.
        painter->setLayoutDirection(lines[line].isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        painter->drawText(QRect(place.left(), place.top() + line * half, place.width(), half), flags,
                          option.fontMetrics.elidedText(lines[line], Qt::ElideRight, place.width()));
    }
}
} // namespace

const QString &RowItem::textOf(int column) const
{
    static const QString none;
    const QString *texts[] = {&none, &m_row.text, &m_row.path, &m_row.offset, &m_row.length};
    return column > 0 && column < 5 ? *texts[column] : none;
}

QVariant RowItem::data(int column, int role) const
{
    static const RowLook look;
    if (role == Qt::DisplayRole)
        return textOf(column);
    if (column != textColumn)
        return {};
    if (role == Qt::DecorationRole)
        return look.icon;
    if (role == Qt::FontRole)
        return look.font;
    return role == Qt::SizeHintRole ? look.size : QVariant();
}

bool RowItem::operator<(const QTreeWidgetItem &other) const
{
    const int column = treeWidget() ? treeWidget()->sortColumn() : textColumn;
    return textOf(column) < static_cast<const RowItem &>(other).textOf(column);
}

void deleteInPieces(QList<QTreeWidgetItem *> rows)
{
    QElapsedTimer time;
    time.start();
    while (!rows.isEmpty() && time.elapsed() < deleteMilliseconds)
        delete rows.takeLast();
    if (!rows.isEmpty())
        QTimer::singleShot(0, [rest = std::move(rows)]() mutable { deleteInPieces(std::move(rest)); });
}

void emptyRows(QTreeWidget *list)
{
    deleteInPieces(list->invisibleRootItem()->takeChildren());
    list->clear();
}

// A row has room for two lines: the line feed that a sender may still have is not shown.
QString RowDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    // Before the toolkit makes line separators of them.
    const QString text = value.toString().replace(QLatin1String("\n\n"), QLatin1String("\n"));
    return QStyledItemDelegate::displayText(text, locale);
}

void RowDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.column() != pathColumn)
        return;
    option->textElideMode = Qt::ElideLeft;
    option->direction = Qt::LeftToRight; // a path always has it
}

void RowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (index.column() != textColumn)
        return QStyledItemDelegate::paint(painter, option, index);
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const QStyle *style = row.widget ? row.widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &row, row.widget) + 1;
    QRect place = style->subElementRect(QStyle::SE_ItemViewItemText, &row, row.widget);
    place = QRect(place.left() + margin, option.rect.top(), place.width() - 2 * margin, option.rect.height());
    const QString text = std::exchange(row.text, QString());
    style->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);

    const bool selected = row.state & QStyle::State_Selected;
    const QPalette::ColorGroup group =
        row.state & QStyle::State_Enabled ? QPalette::Active : QPalette::Disabled;
    painter->save();
    painter->setClipRect(option.rect, Qt::IntersectClip);
    painter->setFont(row.font);
    painter->setPen(row.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    drawLines(painter, place, text, row);
    painter->restore();
    if (row.state & QStyle::State_HasFocus)
        drawFocusFrame(painter, option.rect, row.palette.color(QPalette::HighlightedText));
}

bool RowDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &,
                            const QModelIndex &index)
{
    const QString text = displayText(index.data(), view->locale());
    QToolTip::showText(event->globalPos(), Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal), view);
    return true;
}
