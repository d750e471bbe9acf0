#include "scan/file_tree_path.h"

#include <QStringList>

namespace
{
/// What differs between the stores whose mailboxes are directories. Each member exists because the rows differ.
struct MailboxRule {
    const char *suffix;       ///< counts before ".mbox"
    bool keepsMboxSuffix;     ///< a mailbox ".mbox" keeps its suffix; otherwise it has none in the tree
    bool insideExcludesBelow; ///< the chosen folder inside the mailbox and above it: only the first counts
    bool dropsMboxInside;     ///< ".mbox" goes from the name of a mailbox that the chosen folder lies in
};

// clang-format off
//                             suffix       keepsMboxSuffix  insideExcludesBelow  dropsMboxInside
constexpr MailboxRule appleMail{".imapmbox", true,           false,               false};
constexpr MailboxRule mailMate {".mailbox",  false,          true,                true };
// clang-format on

const QString top = QStringLiteral("Mail");
const QString mboxSuffix = QStringLiteral(".mbox");

// The mailbox's path without its suffix; "" if the file lies in none.
QString mailboxStem(const QString &path, const QString &suffix)
{
    int end = path.lastIndexOf(suffix + QLatin1Char('/'));
    if (end < 0)
        end = path.lastIndexOf(mboxSuffix + QLatin1Char('/'));
    return path.left(qMax(0, end));
}

QString treeOfStem(const QString &stem, const QString &selected, const MailboxRule &rule)
{
    QString tree;
    const bool inside = selected.startsWith(stem);
    if (inside) {
        QString name = stem.mid(stem.lastIndexOf(QLatin1Char('/')) + 1);
        if (rule.dropsMboxInside)
            name.remove(mboxSuffix);
        tree = top + QLatin1Char('/') + name;
    }
    const bool below = (stem + QLatin1Char('/')).startsWith(selected);
    if (below && !(inside && rule.insideExcludesBelow))
        tree += top + stem.mid(selected.size());
    return tree;
}

FilePlace placeInMailbox(const QString &path, const QString &selected, const MailboxRule &rule)
{
    const QString suffix = QLatin1String(rule.suffix);
    const QString stem = mailboxStem(path, suffix);
    if (stem.isEmpty())
        return {};
    // The suffix may stand anywhere in the path, not only where the mailbox ends.
    QString extension;
    if (path.contains(suffix))
        extension = suffix;
    else if (rule.keepsMboxSuffix)
        extension = mboxSuffix;
    return {treeOfStem(stem, selected, rule) + extension, stem + extension};
}
} // namespace

FilePlace appleMailPlace(const QString &path, const QString &selected)
{
    return placeInMailbox(path, selected, appleMail);
}

FilePlace mailMatePlace(const QString &path, const QString &selected)
{
    return placeInMailbox(path, selected, mailMate);
}

FilePlace outspringPlace(const QString &path, const QString &selected)
{
    const QString folder = path.left(path.lastIndexOf(QLatin1Char('/')));
    QString tree = top + folder.mid(selected.size());
    return {tree.remove(mboxSuffix), folder};
}
