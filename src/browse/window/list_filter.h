#pragma once

#include <QLineEdit>
#include <QList>
#include <QStringList>
#include <QTimer>

class QTreeWidget;
class QTreeWidgetItem;

/// A line over the lower edge of the message list that takes the rows out whose sender and subject lack one of the
/// words typed. "/" in the list opens it, Escape or another list closes it; Return and Down go on to the rows.
class ListFilter : public QLineEdit
{
    Q_OBJECT

public:
    /// A child of the list; opens by itself.
    explicit ListFilter(QTreeWidget *list);
    ~ListFilter() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void open();
    void close();
    void forget();
    void placeAtLowerEdge();
    void begin();
    bool fits(const QTreeWidgetItem *row) const;
    void step();
    void end();
    void enterRows();

    QTreeWidget *m_list;
    QStringList m_words;
    QList<QTreeWidgetItem *>
        m_rows; ///< all of the list while words are typed; the filter owns those not in it
    QTreeWidgetItem *m_current = nullptr; ///< the row whose message is shown
    int m_next = 0;                       ///< the row that is looked at next
    bool m_taking = false;                ///< the rows that leave the list stay here
    bool m_sorted = false;                ///< the list has been sorted since `m_rows` were taken
    QTimer m_timer;                       ///< runs until all rows have been looked at
};
