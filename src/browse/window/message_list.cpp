#include "app/window/main_window.h"

#include "app/shared_state.h"
#include "app/window/my_button.h"
#include "app/window/window_state.h"
#include "browse/window/row_feed.h"
#include "browse/window/row_item.h"
#include "dialogs/problem_text.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QThread>
#include <QTreeWidget>

namespace
{
constexpr int answerMilliseconds = 30; ///< the longest that rows are added before the window answers again
constexpr int waitMilliseconds = 5;    ///< the longest that more rows are waited for
constexpr size_t rowsAtOnce = 2000;
} // namespace

// ---- The frame of every loader ----

void QConverterMainWindow::beginList()
{
    const bool inTree = focusWidget() == m_pFolderTree;
    m_pFolderTree->setEnabled(false);
    if (inTree && focusWidget())
        focusWidget()
            ->clearFocus(); // the tree gets it back; a key pressed meanwhile must not act on the list
    m_pMyOpenButton->setEnabled(false);
    m_pMySaveButton->setEnabled(false);
    emptyRows(m_pMessageList);
    // Rows go in as they come, and stay so until the user sorts them; OnStatusBarValue lets it be done.
    m_pMessageList->setSortingEnabled(false);
    m_pMessageList->header()->setSortIndicator(-1, Qt::AscendingOrder);
}

void QConverterMainWindow::fillList(const std::function<void(RowFeed &)> &read)
{
    const QScopedValueRollback<bool> loading(m_listLoading, true);
    RowFeed feed;
    const QScopedPointer<QThread> reader(QThread::create([&] { read(feed); }));
    reader->start();
    if (!reader->isRunning() && !reader->isFinished())
        read(feed); // the system has no thread left
    QElapsedTimer sinceAnswer;
    sinceAnswer.start();
    for (bool ended = false; !ended;) {
        const bool allRead = reader->wait(waitMilliseconds);
        std::vector<MessageRow> rows = feed.take(rowsAtOnce);
        ended = allRead && rows.empty();
        addRows(std::move(rows));
        if (sinceAnswer.elapsed() < answerMilliseconds)
            continue;
        QCoreApplication::processEvents();
        ended = ended || !isVisible(); // the program is being closed
        sinceAnswer.restart();
    }
    feed.close();
    reader->wait();
}

void QConverterMainWindow::addRows(std::vector<MessageRow> rows)
{
    const bool first = m_pMessageList->topLevelItemCount() == 0;
    QList<QTreeWidgetItem *> items;
    items.reserve(static_cast<int>(rows.size()));
    for (MessageRow &row : rows)
        items.append(new RowItem(std::move(row)));
    m_pMessageList->addTopLevelItems(items);
    if (first && !items.isEmpty())
        m_pMessageList->setCurrentItem(items.first(),
                                       1); // the first column is hidden: no key would move from it
}

void QConverterMainWindow::enterMessageList()
{
    if (m_pMessageList->currentItem())
        m_pMessageList->setFocus(Qt::OtherFocusReason);
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
    fillList([&](RowFeed &feed) { feed.add(mailboxRows(path)); });
    endList(name);
}

void QConverterMainWindow::OnGetAllMailofMbs(const QString &path, const QString &name)
{
    beginList();
    fillList([&](RowFeed &feed) { feed.add(operaRows(path, name)); });
    endList(name);
}

void QConverterMainWindow::OnGetAllMailofOlm(QTreeWidgetItem *item, int, const QString &name)
{
    beginList();
    const qint64 folderId = item->text(1).toLongLong();
    fillList([&](RowFeed &feed) { feed.add(olmRows(folderId)); });
    endList(name);
}

// ---- Stores with a file for each message: the folder's files are read now, while the window answers ----

void QConverterMainWindow::OnGetAllFileAndDir(const QString &path)
{
    beginList(); // before events are let in: no second folder can be clicked meanwhile
    QStringList files;
    fillList([&](RowFeed &) { files = filesBelow(path); });
    AllFilePathInStrListForTree = files;
}

void QConverterMainWindow::OnShowIndivisualMailData(const QString &name, const QString &path)
{
    beginList();
    const QStringList files = AllFilePathInStrListForTree;
    QStringList missing;
    fillList([&](RowFeed &feed) {
        for (auto file = files.begin(); file != files.end() && !feed.isClosed(); ++file) {
            if (!isListed(*file, path))
                continue;
            bool opened = false;
            if (std::optional<MessageRow> row = rowOfMessageFile(*file, &opened))
                feed.add(std::move(*row));
            if (!opened)
                missing.append(tr("not listed, it can't be opened: ") + *file);
        }
    });
    endList(name);
    if (!missing.isEmpty())
        showBox(this, QMessageBox::Information, tr("VelmoraMailConverter"), problemText(missing));
}
