#include "scan/message_saving_thread.h"

#include "app/passed_over.h"
#include "app/run_step.h"
#include "app/shared_state.h"
#include "platform/folder_walk.h"
#include "scan/folder_ids.h"
#include "scan/mbox_index.h"
#include "scan/mbox_tree_path.h"
#include "scan/no_data_reason.h"
#include "scan/passed_over_scan.h"
#include "text/mailbox_paths.h"

#include <QFileInfo>

namespace
{
// The file in GetAllFilePathInStrList is no mailbox, or is none by its name.
void tellNoMailbox(MailboxStart start)
{
    if (start == MailboxStart::Separator)
        passedOver.add(GetAllFilePathInStrList, PassedOverReason::ExcludedName);
    else if (start == MailboxStart::Unreadable)
        passedOver.add(GetAllFilePathInStrList, PassedOverReason::Unreadable);
    else
        passedOver.addOther();
}

// The folder and the file record of a mailbox that has been indexed.
void recordMailbox(const QString &entry)
{
    listOfPathOfOnlyForTree.append(entry);
    treeCreator(treePathOfMailbox(entry, m_selectedFile), entry);
    appendMailItem(entry, llParentIdRunning)->size = QFileInfo(entry).size();
}
} // namespace

// Gathers every entry below the selected folder, folders and files alike. Paths are used trimmed, so that one that ends
// with a blank can't be reached, and must not stand for another: the folder "Inbox " not for the mailbox "Inbox". What is
// in such a folder has a path that does not change.
void QMessageSavingThread::OnGetAllFileAndDir(const QString &path)
{
    FolderVisit visit;
    visit.entry = [](const QString &entry, bool isFolder) {
        if (entry.trimmed() == entry)
            AllFilePathInStrList.append(entry);
        else if (!isFolder)
            passedOver.add(entry, PassedOverReason::Name);
    };
    visit.oddName = [](const QString &entry, bool) { passedOver.add(entry, PassedOverReason::Name); };
    visit.unreadable = tellUnreadableFolder;
    visit.stopped = [] { return bStopFlag.load(); };
    if (walkFolder(path, visit))
        bCheckFucntion = true;
}

bool QMessageSavingThread::indexWithProgress(const QString &path, bool shown)
{
    return GetAllFieldsForTree(path, [&](qint64 done, qint64 size) {
        if (shown)
            emit OnIndivisibleProgressvalue(static_cast<double>(done) * 100.0 / static_cast<double>(size));
    });
}

// Indexes every entry; one that is a mailbox file gets its folder and record too. The indexing of a file is always
// finished, so that a stop leaves whole files.
void QMessageSavingThread::PostBoxFileSearch()
{
    strListSplitPath.clear();
    emit OnShowProgressDlg();
    emit OnIndivisibleProgressvalue(0);
    AllFilePathInStrList.clear();
    nextItr = 0;
    bCheckFucntion = false;
    OnGetAllFileAndDir(m_selectedFile);
    if (!bCheckFucntion) {
        reportNoData(true);
        emit OnIndivisibleProgressvalue(100);
        emit NoDataIntoFile();
        return;
    }
    bool anyMailbox = false;
    while (nextItr < AllFilePathInStrList.size()) {
        if (bStopFlag)
            return;
        GetAllFilePathInStrList = AllFilePathInStrList.at(nextItr);
        setRunStep({QFileInfo(GetAllFilePathInStrList).fileName(), nextItr + 1, AllFilePathInStrList.size()});
        anyMailbox = takeEntry() || anyMailbox;
        ++nextItr;
    }
    if (bStopFlag)
        return;
    if (!anyMailbox) {
        reportNoData(true);
        emit NoDataIntoFile();
        return;
    }
    emit OnIndivisibleProgressvalue(100);
    emitFinished();
}

// The entry in GetAllFilePathInStrList; true if it is a mailbox.
bool QMessageSavingThread::takeEntry()
{
    const bool mayBe = mayBeMailbox(GetAllFilePathInStrList);
    const MailboxStart start = lookAtMailbox(GetAllFilePathInStrList);
    const bool begins = start == MailboxStart::Separator;
    if (m_indexMessages && begins)
        indexWithProgress(GetAllFilePathInStrList, mayBe);
    if (begins && mayBe) {
        emit OnSubProgressvalue(0);
        recordMailbox(GetAllFilePathInStrList);
        return true;
    }
    if (start != MailboxStart::NoFile)
        tellNoMailbox(start);
    return false;
}
