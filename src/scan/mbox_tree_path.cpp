#include "scan/mbox_tree_path.h"

#include <QStringList>

QString treePathOfMailbox(const QString &path, const QString &selected)
{
    const QString top = QStringLiteral("Mail");
    const QString bundleFile = QStringLiteral("/mbox");
    if (path.endsWith(bundleFile)) {
        QString folder = path.left(path.lastIndexOf(QLatin1Char('/')));
        if (!selected.isEmpty())
            folder.remove(selected);
        return top + folder + bundleFile;
    }
    for (const char *mark : {"/ImapMail", "/Mail"})
        if (path.contains(QLatin1String(mark)))
            return top + path.split(QLatin1String(mark)).last();
    return top + (path.startsWith(selected) ? path.mid(selected.size()) : path);
}
