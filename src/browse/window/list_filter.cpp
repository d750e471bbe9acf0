#include "browse/window/list_filter.h"

#include <QAbstractItemModel>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTreeWidget>

#include <algorithm>

namespace
{
constexpr int textColumn = 1;
constexpr int answerMilliseconds = 20; ///< how long rows are looked at before the window answers again
} // namespace

ListFilter::ListFilter(QTreeWidget *list) : QLineEdit(list), m_list(list)
{
    setObjectName(QStringLiteral("listFilter"));
    setPlaceholderText(tr("Sender or subject"));
    setAccessibleName(tr("Show only messages with these words"));
    setClearButtonEnabled(true);
    setAutoFillBackground(true);
    hide();
    list->installEventFilter(this);
    connect(this, &QLineEdit::textChanged, this, &ListFilter::begin);
    connect(&m_timer, &QTimer::timeout, this, &ListFilter::step);
    connect(list->model(), &QAbstractItemModel::modelAboutToBeReset, this, &ListFilter::close);
    connect(list->model(), &QAbstractItemModel::layoutChanged, this, &ListFilter::begin); // sorted anew
}

bool ListFilter::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        placeAtLowerEdge();
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->text() == QLatin1String("/"))
        open();
    else if (key->key() == Qt::Key_Escape && isVisible())
        close();
    else
        return false;
    return true;
}

void ListFilter::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        enterRows();
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void ListFilter::open()
{
    placeAtLowerEdge();
    show();
    raise();
    setFocus(Qt::ShortcutFocusReason);
    selectAll();
}

// Its rows come back.
void ListFilter::close()
{
    if (!isVisible())
        return;
    if (hasFocus())
        m_list->setFocus(Qt::OtherFocusReason);
    hide();
    clear();
}

void ListFilter::placeAtLowerEdge()
{
    const QRect view = m_list->viewport()->geometry();
    const int height = sizeHint().height();
    setGeometry(view.left(), view.bottom() + 1 - height, view.width(), height);
}

void ListFilter::begin()
{
    if (!isVisible() && m_words.isEmpty())
        return;
    m_words = text().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    m_next = 0;
    m_timer.start(0);
}

void ListFilter::step()
{
    QElapsedTimer time;
    time.start();
    for (; m_next < m_list->topLevelItemCount() && time.elapsed() < answerMilliseconds; ++m_next) {
        const QString rowText = m_list->topLevelItem(m_next)->text(textColumn);
        const bool fits = std::all_of(m_words.begin(), m_words.end(), [&](const QString &word) {
            return rowText.contains(word, Qt::CaseInsensitive);
        });
        // By the number of the row: an item would look for its own among all.
        if (m_list->isRowHidden(m_next, {}) == fits)
            m_list->setRowHidden(m_next, {}, !fits);
    }
    if (m_next < m_list->topLevelItemCount())
        return;
    m_timer.stop();
    if (m_list->currentItem() && !m_list->currentItem()->isHidden())
        m_list->scrollToItem(m_list->currentItem());
}

// To the row that is current, or the first that is shown.
void ListFilter::enterRows()
{
    m_list->setFocus(Qt::OtherFocusReason);
    if (m_list->currentItem() && !m_list->currentItem()->isHidden())
        return;
    const QModelIndex first = m_list->indexAt(QPoint(0, 0));
    if (QTreeWidgetItem *row = first.isValid() ? m_list->topLevelItem(first.row()) : nullptr)
        m_list->setCurrentItem(row, textColumn);
}
