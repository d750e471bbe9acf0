#include "scan/file_tree_path.h"

#include "text/mailbox_paths.h"

namespace
{
const QString top = QStringLiteral("Mail");
const QString mboxSuffix = QStringLiteral(".mbox");

// "Mail/INBOX" for a stem /a/INBOX that the chosen folder lies in.
QString treeOfMailboxAlone(const QString &stem)
{
    return top + QLatin1Char('/') + stem.mid(stem.lastIndexOf(QLatin1Char('/')) + 1);
}

bool isBelow(const QString &stem, const QString &selected)
{
    return (stem + QLatin1Char('/')).startsWith(selected);
}
} // namespace

FilePlace TreeCreatorForAppleMail(const QString &path, const QString &selected)
{
    const QString imapSuffix = QStringLiteral(".imapmbox");
    const QString stem = mailboxStem(path, imapSuffix);
    if (stem.isEmpty())
        return {};
    // The suffix may stand anywhere in the path, not only where the mailbox ends.
    const QString suffix = path.contains(imapSuffix) ? imapSuffix : mboxSuffix;
    QString tree;
    if (selected.startsWith(stem))
        tree = treeOfMailboxAlone(stem);
    if (isBelow(stem, selected))
        tree += top + stem.mid(selected.size());
    return {tree + suffix, stem + suffix};
}

FilePlace TreeCreatorForMailMate(const QString &path, const QString &selected)
{
    const QString mailboxSuffix = QStringLiteral(".mailbox");
    const QString stem = mailboxStem(path, mailboxSuffix);
    if (stem.isEmpty())
        return {};
    const QString suffix = path.contains(mailboxSuffix) ? mailboxSuffix : QString();
    QString tree;
    if (selected.startsWith(stem))
        tree = treeOfMailboxAlone(stem).remove(mboxSuffix);
    else if (isBelow(stem, selected))
        tree = top + stem.mid(selected.size());
    return {tree + suffix, stem + suffix};
}

FilePlace TreeCreatorForOutSpring(const QString &path, const QString &selected)
{
    const QString folder = path.left(path.lastIndexOf(QLatin1Char('/')));
    QString tree = top + folder.mid(selected.size());
    return {tree.remove(mboxSuffix), folder};
}
