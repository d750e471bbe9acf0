#include "browse/window/folder_view.h"

#include "platform/window/focus_frame.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QTextDocument>
#include <QToolTip>

namespace
{
const QColor boxEdge(130, 136, 150);
}

void FolderView::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentItem()) {
        emit leftByKey();
        return;
    }
    const QTreeWidgetItem *before = currentItem();
    QTreeWidget::keyPressEvent(event);
    if (currentItem() && currentItem() != before)
        emit chosenByKey(currentItem(), 0);
}

void FolderView::changeEvent(QEvent *event)
{
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && isEnabled())
        setFocus(Qt::OtherFocusReason);
}

void FolderDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->palette.setColor(QPalette::Base, Qt::white);
    option->palette.setColor(QPalette::Window, boxEdge);
}

// The column is wider than the pane; what is out of sight can't be elided by the toolkit.
void FolderDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    QStyleOptionViewItem seen = option;
    if (const auto *view = qobject_cast<const QAbstractItemView *>(option.widget)) {
        const QRect pane = view->viewport()->rect();
        if (option.direction == Qt::RightToLeft)
            seen.rect.setLeft(qMax(seen.rect.left(), pane.left()));
        else
            seen.rect.setRight(qMin(seen.rect.right(), pane.right()));
    }
    QStyledItemDelegate::paint(painter, seen, index);
    if (option.state & QStyle::State_HasFocus)
        drawFocusFrame(painter, seen.rect, option.palette.color(QPalette::HighlightedText));
}

bool FolderDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &,
                               const QModelIndex &index)
{
    // A folder's name is foreign text: never markup.
    QToolTip::showText(event->globalPos(),
                       Qt::convertFromPlainText(index.data().toString(), Qt::WhiteSpaceNormal), view);
    return true;
}
