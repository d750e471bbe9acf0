#include "save/mbox_target.h"

#include "save/safe_path.h"

#include <QStringList>

namespace
{
const QString bundleMark = QStringLiteral(".mbox/");
const QString suffix = QStringLiteral(".mbox");
const QString slash = QStringLiteral("/");

// What stands before the last `mark`; the whole text where it doesn't stand.
QString upToLast(const QString &text, const QString &mark)
{
    return text.left(text.lastIndexOf(mark));
}

QString behindLastSlash(const QString &text)
{
    return text.mid(text.lastIndexOf(slash) + 1);
}

QString without(QString text, const QString &part)
{
    return part.isEmpty() ? text : text.remove(part);
}

// What stands behind the last "/Mail/", else behind the last "/ImapMail/"; null where neither stands.
QString mailTail(const QString &path)
{
    for (const char *mark : {"/Mail/", "/ImapMail/"})
        if (path.contains(QLatin1String(mark)))
            return path.split(QLatin1String(mark)).last();
    return {};
}

QString bundleName(const QString &path)
{
    return behindLastSlash(upToLast(path, bundleMark));
}

// A bundle's place below the selection; a bundle that is the selection itself has only its name.
QString bundleFolder(const QString &path, const QString &selected)
{
    const QString below = without(path + slash, selected);
    const QString folder = upToLast(below, bundleMark);
    return folder == QLatin1String("/mbox/") ? bundleName(path) : folder;
}
} // namespace

MailboxTarget mboxToOutlook(const QString &path, const QString &selected, const QString &saveFolder)
{
    QString folder;
    QString name;
    if (path.endsWith(QLatin1String("/mbox"))) {
        folder = bundleFolder(path, selected);
        name = slash + bundleName(path);
    } else {
        QString tail = mailTail(path);
        if (tail.isNull())
            tail = path.mid(path.startsWith(selected) ? selected.size() + 1 : 1);
        folder = (tail.contains(suffix) ? tail : upToLast(tail, slash)) + slash;
        name = behindLastSlash(tail);
    }
    return targetInMail(outlookBundle, saveFolder, slash + harmlessPath(folder), name.remove(suffix));
}

MailboxTarget mboxToAppleMail(const QString &path, const QString &selected, const QString &saveFolder)
{
    const QString base = bundlePath(appleBundle, saveFolder) + QStringLiteral("/Mail/");
    const QString below = mailTail(path + slash);
    const QString tail = (below.isNull() ? path + slash : below).trimmed();
    if (tail.startsWith(selected)) {
        const QString folder = harmlessPath(bundleFolder(path, selected));
        return {base + folder, base + folder + bundleName(path) + suffix};
    }
    const QStringList components = tail.split(slash);
    const QString last = components.value(components.size() - 2);
    const QString head = tail.left(tail.indexOf(last));
    return {base + head + last, base + tail + last + suffix};
}
