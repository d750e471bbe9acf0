#include "text/mailbox_paths.h"

bool mayBeMailbox(const QString &path)
{
    for (const char *other : {".mbs", ".emlx", ".eml", ".olm"})
        if (path.contains(QLatin1String(other)))
            return false;
    return !path.endsWith(QLatin1String(".mbox"));
}

bool isNewsFeed(const QString &path)
{
    return path.contains(QLatin1String("/RSS/Apple Hot News.rssmbox/"));
}

QString mailboxStem(const QString &path, const QString &suffix)
{
    int end = path.lastIndexOf(suffix + QLatin1Char('/'));
    if (end < 0)
        end = path.lastIndexOf(QLatin1String(".mbox/"));
    return path.left(qMax(0, end));
}

QString mailboxStemOrFolder(const QString &path, const QString &suffix)
{
    const QString stem = suffix.isEmpty() ? QString() : mailboxStem(path, suffix);
    return stem.isEmpty() ? path.left(path.lastIndexOf(QLatin1Char('/'))) : stem;
}
