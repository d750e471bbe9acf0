#include "save/file_target.h"

#include "save/safe_path.h"
#include "text/mailbox_paths.h"

namespace
{
const QString slash = QStringLiteral("/");
const QString mailFolder = QStringLiteral("/Mail");
const QString mboxSuffix = QStringLiteral(".mbox");
const QString messagesFolder = QStringLiteral("Messages");
constexpr int imapFolderUnits = 15; // "/Messages/IMAP/"

QString without(QString text, const QString &part)
{
    return part.isEmpty() ? text : text.remove(part);
}

QString nameOf(const QString &stem)
{
    return stem.mid(stem.lastIndexOf(slash) + 1);
}

// The place of a mailbox that the store is or lies in; `inside`: where the store lies in it.
QString placeAround(const QString &stem, const QString &inside)
{
    return without(mailFolder + inside + slash + nameOf(stem), mboxSuffix) + slash;
}

// The mailbox's target; `base` is its bundle's folder that the place starts in.
MailboxTarget targetAt(const QString &base, const QString &place, const QString &stem)
{
    // What is taken out of a name may leave one that leads up.
    QString folder = base + harmlessPath(place);
    if (!folder.endsWith(slash))
        folder += slash;
    return {folder, folder + nameOf(stem) + mboxSuffix};
}

// `folder`: what a target is appended to. `mail`: what stands before the place of a mailbox below the store: "/Mail",
// "/Mail/" or "".
struct Base {
    QString folder;
    QString mail;
};

Base inOutlook(const QString &saveFolder)
{
    return {bundlePath(outlookBundle, saveFolder), mailFolder};
}

Base inAppleMail(const QString &saveFolder)
{
    return {bundlePath(appleBundle, saveFolder) + mailFolder + slash, QString()};
}

MailboxTarget mailMateTarget(const QString &path, const QString &selected, const Base &base)
{
    const QString suffix = QStringLiteral(".mailbox");
    const QString stem = mailboxStemOrFolder(path, suffix);
    QString place;
    if (selected.startsWith(stem)) {
        place = placeAround(stem, without(selected, stem).remove(mboxSuffix).remove(suffix));
    } else if ((stem + slash).startsWith(selected)) {
        QString below = without(stem + slash, selected).remove(mboxSuffix);
        if (below.contains(messagesFolder))
            below = below.mid(imapFolderUnits);
        place = base.mail + below.remove(suffix);
    }
    return targetAt(base.folder, place, stem);
}

MailboxTarget outspringTarget(const QString &path, const QString &selected, const Base &base)
{
    const QString stem = mailboxStemOrFolder(path, QString());
    QString place;
    if (selected.startsWith(stem))
        place = placeAround(stem, without(selected, stem).remove(mboxSuffix));
    if ((stem + slash).startsWith(selected))
        place += base.mail + without(stem + slash, selected).remove(mboxSuffix);
    return targetAt(base.folder, place, stem);
}
} // namespace

MailboxTarget emlxToOutlook(const QString &path, const QString &selected, const QString &saveFolder)
{
    const QString suffix = QStringLiteral(".imapmbox");
    const QString stem = mailboxStemOrFolder(path, suffix);
    QString place;
    if (selected.startsWith(stem)) {
        QString inside = without(selected, stem).remove(mboxSuffix).remove(suffix);
        if (inside.contains(messagesFolder)) {
            inside.remove(messagesFolder);
            inside.chop(1);
        }
        place = placeAround(stem, inside);
    }
    if ((stem + slash).startsWith(selected))
        place += mailFolder + without(stem + slash, selected).remove(mboxSuffix).remove(suffix);
    return targetAt(bundlePath(outlookBundle, saveFolder), place, stem);
}

MailboxTarget mailMateToOutlook(const QString &path, const QString &selected, const QString &saveFolder)
{
    Base base = inOutlook(saveFolder);
    base.mail += slash;
    return mailMateTarget(path, selected, base);
}

MailboxTarget mailMateToAppleMail(const QString &path, const QString &selected, const QString &saveFolder)
{
    return mailMateTarget(path, selected, inAppleMail(saveFolder));
}

MailboxTarget outspringToOutlook(const QString &path, const QString &selected, const QString &saveFolder)
{
    return outspringTarget(path, selected, inOutlook(saveFolder));
}

MailboxTarget outspringToAppleMail(const QString &path, const QString &selected, const QString &saveFolder)
{
    return outspringTarget(path, selected, inAppleMail(saveFolder));
}
