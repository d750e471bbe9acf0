#include "save/mail_saving.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "save/mailbox_copy.h"
#include "save/mbox_target.h"
#include "save/outlook_bundle.h"
#include "save/ticked_items.h"
#include "text/mbox_names.h"

#include <QDir>

namespace
{
// Opens the target of the mailbox in GetAllFilePathInStrList; the first one of a save lays out the bundle.
void openTarget(MailboxFile *target, bool *prepared)
{
    FileSavingIdentification = true;
    const QString &path = GetAllFilePathInStrList;
    if (!listOfPathOfOnlyForTree.contains(path))
        return;
    const bool apple = bForAppleMail;
    const MailboxTarget place =
        (apple ? appleTargetOfMailbox : outlookTargetOfMailbox)(path, m_selectedFile, saveDir);
    QDir().mkpath(place.folder);
    target->open(place.file, apple ? appleMailbox : outlookMailbox);
    if (!apple && !*prepared)
        prepareOutlookBundle(saveDir + QStringLiteral("/Main Identity.rge"));
    *prepared = true;
}
} // namespace

void QMailSaving::PostBoxFileSearch()
{
    nextItr = 0;
    emit OnShowProgressDlg();
    emit OnIndivisibleProgressvalue(0);
    ulCount = countTickedItems();
    bool prepared = false;
    for (const FolderAttribNode *folder = StartFldrAtrib; folder; folder = folder->next) {
        if (folder->state == stateTicked)
            for (const MailItemNode *item : mailItemsOfFolder(folder->folderId)) {
                if (bStopFlag)
                    break;
                copyMailbox(pathOf(*item), &prepared);
                ++nextItr;
            }
        if (static_cast<quint64>(nextItr) == ulCount) {
            emit OnIndivisibleProgressvalue(100);
            emitFinished();
            return;
        }
    }
}

void QMailSaving::copyMailbox(const QString &path, bool *prepared)
{
    GetAllFilePathInStrList = path;
    MailboxCopy copy;
    if (!mayBeMailbox(path) || !copy.open(path.trimmed())) {
        reportUnread(QStringLiteral("passed over, it can't be read as a mailbox any more: ") +
                     (copy.errorString().isEmpty() ? path : copy.errorString()));
        return;
    }
    MailboxFile target;
    openTarget(&target, prepared);
    int shown = -1;
    copy.copyTo(&target, [&](qint64 done, qint64 size) {
        const int percent = static_cast<int>(done * 100 / qMax<qint64>(1, size));
        if (percent != shown)
            emit OnIndivisibleProgressvalue(percent);
        shown = percent;
        return !bStopFlag;
    });
}
