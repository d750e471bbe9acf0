#include "app/window/main_window.h"

#include "app/shared_state.h"
#include "browse/folder_tree.h"
#include "browse/window/picture_icon.h"
#include "browse/window/row_item.h"
#include "platform/window/text_fit.h"

#include <QScopedValueRollback>
#include <QTreeWidget>

// The columns of a folder item. Numbers are decimal text.
namespace
{
enum Column { NameColumn = 0, IdColumn = 1, ParentColumn = 2, PathColumn = 3, StateColumn = 7 };

qint64 idOf(const QTreeWidgetItem *item)
{
    return item->text(IdColumn).toLongLong();
}

quint8 stateOf(Qt::CheckState check)
{
    switch (check) {
    case Qt::Checked:
        return stateTicked;
    case Qt::PartiallyChecked:
        return statePartlyTicked;
    case Qt::Unchecked:
        break;
    }
    return stateNotTicked;
}

Qt::CheckState checkOf(quint8 state)
{
    if (state == stateTicked)
        return Qt::Checked;
    return state == statePartlyTicked ? Qt::PartiallyChecked : Qt::Unchecked;
}
} // namespace

QTreeWidgetItem *QConverterMainWindow::newFolderItem(const QString &name, qint64 folderId, qint64 parentId,
                                                     const QString &path)
{
    static const QIcon icon = pictureIcon(QStringLiteral(":/images/img_Folder.png"));
    auto *item = new QTreeWidgetItem;
    item->setText(NameColumn, name);
    item->setIcon(NameColumn, icon);
    item->setCheckState(NameColumn, Qt::Unchecked);
    const QFont font = lucidaFont(11);
    item->setSizeHint(NameColumn, QSize(22, qMax(22, QFontMetrics(font).height())));
    item->setFont(NameColumn, font);
    item->setText(IdColumn, QString::number(folderId));
    item->setText(ParentColumn, QString::number(parentId));
    item->setText(PathColumn, path);
    item->setText(StateColumn, QString::number(stateNotTicked));
    m_folderItems.insert(folderId, item);
    return item;
}

// A folder whose parent isn't in the tree has a record but no item.
void QConverterMainWindow::OnMakeTreeWidget(qint64 folderId, const QString &name, qint64 parentId,
                                            const QString &path)
{
    const QScopedValueRollback<bool> marking(m_marking, true);
    if (m_pFolderTree->topLevelItemCount() == 0)
        m_pFolderTree->addTopLevelItem(
            newFolderItem(QStringLiteral("Main Identity"), llRootId, 0, QString()));
    if (QTreeWidgetItem *parent = m_folderItems.value(parentId)) {
        QTreeWidgetItem *item = newFolderItem(displayName(name), folderId, parentId, path);
        parent->addChild(item);
        parent->setExpanded(true);
        item->setExpanded(true);
    }
    addFolderRecord(folderId, parentId);
}

// A box that the keyboard toggles sends no click, so the marks follow the item itself.
void QConverterMainWindow::onFolderItemChanged(QTreeWidgetItem *item, int column)
{
    if (column == NameColumn && !m_marking)
        LeftTreeWidgetItem(item);
}

void QConverterMainWindow::ShowindivisualMailItemsInfo(QTreeWidgetItem *item, int column)
{
    if (!item || m_listLoading)
        return;
    m_pFolderTree->setCurrentItem(item); // a click on a box does not do it
    const quint8 recorded = static_cast<quint8>(item->text(StateColumn).toUInt());
    const Qt::CheckState check = item->checkState(NameColumn);
    if (check != Qt::PartiallyChecked && !(check == Qt::Checked && recorded == stateTicked))
        LeftTreeWidgetItem(item);

    clearPreview();
    emptyRows(m_pMessageList);
    AllFilePathInStrListForTree.clear();
    const QString path = item->text(PathColumn);
    const QString name = item->text(NameColumn);
    if (bMboxFileFound) {
        OnGetAllMailofMbox(path, name);
    } else if (bOlmFileFound) {
        OnGetAllMailofOlm(item, column, name);
    } else if (bMbsFileFound) {
        OnGetAllMailofMbs(path, name);
    } else {
        if (!path.isEmpty())
            OnGetAllFileAndDir(path);
        OnShowIndivisualMailData(name, path);
    }
    m_pFolderTree->setFocus(Qt::OtherFocusReason);
}

// ---- Marks: the records go first (they are what a save goes by), the items mirror them ----

void QConverterMainWindow::LeftTreeWidgetItem(QTreeWidgetItem *item)
{
    if (!item)
        return;
    letWorkersEnd(); // a stopped save may still be reading the records
    const quint8 state = stateOf(item->checkState(NameColumn));
    const qint64 id = idOf(item);
    if (id == llRootId) {
        if (state != statePartlyTicked)
            MarkDirToRootCheckedOrUnchecked(state, static_cast<unsigned long long>(id));
        return;
    }
    markFolder(id, state);
    if (state != statePartlyTicked)
        MarkChildAccordingToParent(item, state);
    MarkParentAccordingToChild(item);
}

void QConverterMainWindow::MarkDirToRootCheckedOrUnchecked(unsigned char state, unsigned long long)
{
    markFolder(llRootId, state);
    checkAllFolderItems(checkOf(state));
}

void QConverterMainWindow::checkAllFolderItems(Qt::CheckState state)
{
    const QScopedValueRollback<bool> marking(m_marking, true);
    for (QTreeWidgetItem *item : qAsConst(m_folderItems))
        item->setCheckState(NameColumn, state);
}

void QConverterMainWindow::MarkChildAccordingToParent(QTreeWidgetItem *item, unsigned char state)
{
    const QScopedValueRollback<bool> marking(m_marking, true);
    std::vector<QTreeWidgetItem *> open = {item};
    for (size_t i = 0; i < open.size(); ++i) {
        for (int child = 0; child < open[i]->childCount(); ++child) {
            open.push_back(open[i]->child(child));
            open.back()->setCheckState(NameColumn, checkOf(state));
        }
    }
}

void QConverterMainWindow::MarkParentAccordingToChild(QTreeWidgetItem *item)
{
    const QScopedValueRollback<bool> marking(m_marking, true);
    for (QTreeWidgetItem *parent = item->parent(); parent; parent = parent->parent()) {
        const FolderAttribNode *record = findFolder(idOf(parent));
        if (!record)
            continue;
        parent->setCheckState(NameColumn, checkOf(record->state));
        parent->setText(StateColumn, QString::number(record->state));
    }
}
