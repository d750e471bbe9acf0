#include "scan/passed_over_scan.h"

#include "app/passed_over.h"
#include "app/problem_log.h"
#include "app/shared_state.h"
#include "platform/folder_walk.h"

void tellUnreadableFolder(const QString &path, const QString &error)
{
    reportUnread(Problem::tr("a folder can't be read: %1: %2").arg(path, error));
    passedOver.add(path, PassedOverReason::Unreadable);
}

namespace
{
const QString partSuffix = QStringLiteral(".emlxpart");

void tellMessageFile(const QString &path, const TakenFiles &taken)
{
    if (path.trimmed() != path || path.contains(QLatin1Char('\n')))
        passedOver.add(path, PassedOverReason::Name);
    else if (path == taken.unreadable)
        passedOver.add(path, PassedOverReason::Unreadable);
    else
        passedOver.add(path, taken.isWhole ? PassedOverReason::NoFolder : PassedOverReason::NotReached);
}

void tellFile(const QString &path, const TakenFiles &taken)
{
    if (listOfPathOfOnlyForTree.contains(path) || path.endsWith(QLatin1String("/accounts.ini")))
        return;
    if (path.trimmed().endsWith(taken.suffix))
        tellMessageFile(path, taken);
    else if (!path.endsWith(partSuffix))
        passedOver.addOther();
    else if (!taken.takenParts.contains(path))
        passedOver.add(path, PassedOverReason::Part);
}
} // namespace

void tellPassedOverFiles(const TakenFiles &taken)
{
    FolderVisit visit;
    visit.entry = [&](const QString &path, bool isFolder) {
        if (!isFolder)
            tellFile(path, taken);
    };
    visit.oddName = [&](const QString &path, bool isFolder) {
        if (isFolder || path.endsWith(taken.suffix) || path.endsWith(partSuffix))
            passedOver.add(path, PassedOverReason::Name);
        else
            passedOver.addOther();
    };
    visit.unreadable = tellUnreadableFolder;
    visit.followsFolderLinks = false; // as the search for the messages
    walkFolder(m_selectedFile, visit);
}
