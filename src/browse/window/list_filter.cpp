#include "browse/window/list_filter.h"

#include "browse/window/row_item.h"

#include <QAbstractItemModel>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTreeWidget>

#include <algorithm>
#include <utility>

namespace
{
constexpr int textColumn = 1;
constexpr int answerMilliseconds = 20; ///< how long rows are looked at before the window answers again
constexpr int mostAtOnce = 20000;      ///< rows put into the list before the window answers again
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
    connect(list->model(), &QAbstractItemModel::rowsAboutToBeRemoved, this, [this] {
        if (!m_taking)
            forget();
    });
    connect(list->model(), &QAbstractItemModel::modelAboutToBeReset, this, &ListFilter::forget);
    connect(list->model(), &QAbstractItemModel::layoutChanged, this, [this] { m_sorted = true; });
}

ListFilter::~ListFilter()
{
    forget();
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

// A list that still fills would get rows behind the filter's back; it can't be sorted either.
void ListFilter::open()
{
    if (!m_list->isSortingEnabled() && m_rows.isEmpty())
        return;
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

// The list is being emptied, and gives up the rows that it shows.
void ListFilter::forget()
{
    m_timer.stop();
    QList<QTreeWidgetItem *> others = std::exchange(m_rows, {});
    others.erase(std::remove_if(others.begin(), others.end(), [](auto *row) { return row->treeWidget(); }),
                 others.end());
    deleteInPieces(std::move(others));
    m_current = nullptr;
    hide();
    clear();
}

void ListFilter::placeAtLowerEdge()
{
    const QRect view = m_list->viewport()->geometry();
    const int height = sizeHint().height();
    setGeometry(view.left(), view.bottom() + 1 - height, view.width(), height);
}

// The list is filled anew with the rows that fit: hundreds of thousands of hidden rows would make the toolkit slow.
void ListFilter::begin()
{
    if (!isVisible() && m_rows.isEmpty())
        return;
    const QSignalBlocker noPreview(m_list);
    if (m_list->currentItem())
        m_current = m_list->currentItem();
    m_taking = true;
    const QList<QTreeWidgetItem *> shown = m_list->invisibleRootItem()->takeChildren();
    m_taking = false;
    if (m_rows.isEmpty()) {
        m_rows = shown;
        m_sorted = false;
    }
    m_list->setSortingEnabled(false); // rows that are put in one by one would come in reverse
    m_words = text().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    m_next = 0;
    m_timer.start(0);
}

bool ListFilter::fits(const QTreeWidgetItem *row) const
{
    const QString rowText = row->text(textColumn);
    return std::all_of(m_words.begin(), m_words.end(),
                       [&](const QString &word) { return rowText.contains(word, Qt::CaseInsensitive); });
}

void ListFilter::step()
{
    QElapsedTimer time;
    time.start();
    QList<QTreeWidgetItem *> found;
    for (; m_next < m_rows.size() && found.size() < mostAtOnce && time.elapsed() < answerMilliseconds;
         ++m_next)
        if (fits(m_rows[m_next]))
            found.append(m_rows[m_next]);
    m_list->addTopLevelItems(found);
    // The message that is shown stays the current one, without being shown anew.
    if (found.contains(m_current)) {
        const QSignalBlocker noPreview(m_list);
        m_list->setCurrentItem(m_current, textColumn);
    }
    if (m_next >= m_rows.size())
        end();
}

// Turning sorting on sorts the list, which is in order already, if the user has not sorted a part of it meanwhile.
void ListFilter::end()
{
    m_timer.stop();
    QHeaderView *header = m_list->header();
    const int column = header->sortIndicatorSection();
    const Qt::SortOrder order = header->sortIndicatorOrder();
    if (!m_sorted)
        header->setSortIndicator(-1, order);
    m_list->setSortingEnabled(true);
    if (!m_sorted) {
        const QSignalBlocker noSort(header);
        header->setSortIndicator(column, order);
    }
    if (m_words.isEmpty())
        m_rows.clear();
    if (m_list->currentItem())
        m_list->scrollToItem(m_list->currentItem());
}

// To the row that is current, or the first that is shown.
void ListFilter::enterRows()
{
    m_list->setFocus(Qt::OtherFocusReason);
    if (!m_list->currentItem() && m_list->topLevelItemCount() > 0)
        m_list->setCurrentItem(m_list->topLevelItem(0), textColumn);
}
