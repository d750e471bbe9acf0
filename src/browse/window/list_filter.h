#pragma once

#include <QLineEdit>
#include <QStringList>
#include <QTimer>

class QTreeWidget;

/// A line over the lower edge of the message list that hides the rows whose sender and subject lack one of the words
/// typed. "/" in the list opens it, Escape or another list closes it; Return and Down go on to the rows.
class ListFilter : public QLineEdit
{
    Q_OBJECT

public:
    /// A child of the list; opens by itself.
    explicit ListFilter(QTreeWidget *list);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void open();
    void close();
    void placeAtLowerEdge();
    void begin();
    void step();
    void enterRows();

    QTreeWidget *m_list;
    QStringList m_words;
    int m_next = 0; ///< the row that is looked at next
    QTimer m_timer; ///< runs until all rows have been looked at
};
