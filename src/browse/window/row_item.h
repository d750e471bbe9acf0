#pragma once

#include "browse/message_rows.h"

#include <QList>
#include <QStyledItemDelegate>
#include <QTreeWidgetItem>

/// A row of the message list. It keeps the texts alone, as a folder may have hundreds of thousands of rows; icon,
/// font and size are the same for all.
class RowItem : public QTreeWidgetItem
{
public:
    explicit RowItem(MessageRow row) : QTreeWidgetItem(UserType), m_row(std::move(row)) {}

    QVariant data(int column, int role) const override;
    bool operator<(const QTreeWidgetItem &other) const override;
    /// The text of a column; "" for one that has none.
    const QString &textOf(int column) const;

private:
    MessageRow m_row;
};

/// Deletes rows that are in no list. Hundreds of thousands take longer than a window may be silent: it answers
/// meanwhile.
void deleteInPieces(QList<QTreeWidgetItem *> rows);
/// Empties the list at once; its rows are deleted in pieces.
void emptyRows(QTreeWidget *list);

/// Paints sender and subject in a half of the row each, whatever the script: letters that another font stands in for
/// would else move the subject out of the row. Paths lose their beginning where there is no room.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant &value, const QLocale &locale) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    /// Shows a row's whole text. It is foreign: never markup.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};
