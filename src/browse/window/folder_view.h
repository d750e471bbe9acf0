#pragma once

#include <QStyledItemDelegate>
#include <QTreeWidget>

/// The folder tree. It tells a change of folder by the keyboard apart from a click, which is told by the toolkit.
class FolderView : public QTreeWidget
{
    Q_OBJECT

public:
    using QTreeWidget::QTreeWidget;

signals:
    /// The arrows and the like have made another folder the current one, or Return asks for its list.
    void chosenByKey(QTreeWidgetItem *item, int column);
    /// Return was pressed: on to the folder's messages.
    void leftByKey();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    /// After a run or a list, the tree is where it goes on.
    void changeEvent(QEvent *event) override;
};

/// Tick boxes that stand out on the tree's ground; names that end where the pane does, with a tool tip.
class FolderDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
