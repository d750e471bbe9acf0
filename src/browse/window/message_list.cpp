#include "app/window/main_window.h"

#include "app/shared_state.h"
#include "app/window/my_button.h"
#include "app/window/window_state.h"
#include "browse/window/picture_icon.h"
#include "dialogs/problem_text.h"
#include "platform/window/text_fit.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QScopedValueRollback>
#include <QTreeWidget>

namespace
{
constexpr int answerMilliseconds = 50; ///< how long a folder's files are read before the window answers again
constexpr int rowSide = 32;            ///< pixels

// What all rows share; made once, as a folder may have many.
struct RowLook {
    QIcon icon = pictureIcon(QStringLiteral(":/images/img_Mail.png"));
    QFont font = lucidaFont(11);
    // Two lines of this font, on screens whose points are larger than the row was laid out for.
    QSize size{rowSide, qMax(rowSide, 2 * QFontMetrics(font).lineSpacing() + 2)};
};

QTreeWidgetItem *newRow(const MessageRow &row, const RowLook &look)
{
    auto *item = new QTreeWidgetItem({QString(), row.text, row.path, row.offset, row.length});
    item->setIcon(1, look.icon);
    item->setSizeHint(1, look.size);
    item->setFont(1, look.font);
    return item;
}

void answer()
{
    QCoreApplication::processEvents();
}
} // namespace

// ---- The frame of every loader ----

void QConverterMainWindow::beginList()
{
    m_pFolderTree->setEnabled(false);
    m_pMyOpenButton->setEnabled(false);
    m_pMySaveButton->setEnabled(false);
    m_pMessageList->clear();
    m_pMessageList->setSortingEnabled(false); // rows go in as they come; OnStatusBarValue turns it on
}

void QConverterMainWindow::addRows(const std::vector<MessageRow> &rows)
{
    static const RowLook look;
    const bool first = m_pMessageList->topLevelItemCount() == 0;
    QList<QTreeWidgetItem *> items;
    items.reserve(static_cast<int>(rows.size()));
    for (const MessageRow &row : rows)
        items.append(newRow(row, look));
    m_pMessageList->addTopLevelItems(items);
    if (first && !items.isEmpty())
        m_pMessageList->setCurrentItem(items.first());
}

void QConverterMainWindow::endList(const QString &name)
{
    OnStatusBarValue(name, static_cast<uint>(m_pMessageList->topLevelItemCount()));
    m_pFolderTree->setEnabled(true);
    m_pMyOpenButton->setEnabled(true);
    m_pMySaveButton->setEnabled(true);
    m_pMessageList->scrollToTop();
}

// ---- Loaders of the stores whose scan has kept the senders and subjects ----

void QConverterMainWindow::OnGetAllMailofMbox(const QString &path, const QString &name)
{
    beginList();
    addRows(mailboxRows(path));
    endList(name);
}

void QConverterMainWindow::OnGetAllMailofMbs(const QString &path, const QString &name)
{
    beginList();
    addRows(operaRows(path, name));
    endList(name);
}

void QConverterMainWindow::OnGetAllMailofOlm(QTreeWidgetItem *item, int, const QString &name)
{
    beginList();
    addRows(olmRows(item->text(1).toLongLong()));
    endList(name);
}

// ---- Stores with a file for each message: the folder's files are read now, while the window answers ----

void QConverterMainWindow::OnGetAllFileAndDir(const QString &path)
{
    beginList(); // before events are let in: no second folder can be clicked meanwhile
    const QScopedValueRollback<bool> loading(m_listLoading, true);
    AllFilePathInStrListForTree = filesBelow(path, answer);
}

void QConverterMainWindow::OnShowIndivisualMailData(const QString &name, const QString &path)
{
    beginList();
    const QScopedValueRollback<bool> loading(m_listLoading, true);
    const QStringList files = AllFilePathInStrListForTree;
    std::vector<MessageRow> rows;
    QStringList missing;
    QElapsedTimer sinceAnswer;
    sinceAnswer.start();
    for (const QString &file : files) {
        if (!isListed(file, path))
            continue;
        bool opened = false;
        if (std::optional<MessageRow> row = rowOfMessageFile(file, &opened))
            rows.push_back(std::move(*row));
        if (!opened)
            missing.append(tr("not listed, it can't be opened: ") + file);
        if (sinceAnswer.elapsed() < answerMilliseconds)
            continue;
        addRows(rows);
        rows.clear();
        answer();
        if (!isVisible())
            break; // the program is being closed
        sinceAnswer.restart();
    }
    addRows(rows);
    endList(name);
    if (!missing.isEmpty())
        showBox(this, QMessageBox::Information, tr("VelmoraMailConverter"), problemText(missing));
}
