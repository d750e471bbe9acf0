#include "save/file_target.h"

#include "save/safe_path.h"

namespace
{
const QString slash = QStringLiteral("/");
const QString mboxSuffix = QStringLiteral(".mbox");
const QString messagesFolder = QStringLiteral("Messages");
constexpr int imapFolderUnits = 15; // "/Messages/IMAP/"

QString without(QString text, const QString &part)
{
    return part.isEmpty() ? text : text.remove(part);
}

// The selection's place below the mailbox around it.
QString placeInside(const TargetRule &rule, const QString &stem, const QString &selected)
{
    QString place = without(selected, stem).remove(mboxSuffix).remove(QLatin1String(rule.suffix));
    if (rule.messages == MessagesFolder::LeavesSelection && place.contains(messagesFolder)) {
        place.remove(messagesFolder);
        place.chop(1);
    }
    return place;
}

// The mailbox's place below the selection.
QString placeBelow(const TargetRule &rule, const QString &mailbox, const QString &selected)
{
    QString place = without(mailbox, selected).remove(mboxSuffix);
    if (rule.messages == MessagesFolder::CutsPath && place.contains(messagesFolder))
        place = place.mid(imapFolderUnits);
    return place.remove(QLatin1String(rule.suffix));
}
} // namespace

QString mailboxStem(const TargetRule &rule, const QString &path)
{
    int end = -1;
    if (rule.suffix) {
        end = path.lastIndexOf(QLatin1String(rule.suffix) + slash);
        if (end < 0)
            end = path.lastIndexOf(mboxSuffix + slash);
    }
    return path.left(end < 0 ? path.lastIndexOf(slash) : end);
}

MailboxTarget targetOfStem(const TargetRule &rule, const QString &stem, const QString &selected,
                           const QString &saveFolder)
{
    const QString name = stem.mid(stem.lastIndexOf(slash) + 1);
    const bool inside = selected.startsWith(stem);
    QString place;
    if (inside)
        place =
            without(QStringLiteral("/Mail") + placeInside(rule, stem, selected) + slash + name, mboxSuffix) +
            slash;
    const QString mailbox = stem + slash;
    if (mailbox.startsWith(selected) && !(inside && rule.insideExcludesBelow))
        place += QLatin1String(rule.mail) + placeBelow(rule, mailbox, selected);
    // What is taken out of a name may leave one that leads up.
    QString folder = saveFolder + QLatin1String(rule.base) + harmlessPath(place);
    if (!folder.endsWith(slash))
        folder += slash;
    return {folder, folder + name + mboxSuffix};
}
