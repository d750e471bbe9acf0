#include "text/semicolon_list.h"

QString lastItem(const QString &list)
{
    const QChar separator = QLatin1Char(';');
    QString item = list;
    if (item.count(separator) >= 2) {
        item.chop(1);
        item = item.mid(item.lastIndexOf(separator) + 1);
    }
    return item.remove(separator);
}

bool correspond(const QString &addresses, const QString &names)
{
    const QChar separator = QLatin1Char(';');
    const int items = entitiesUndone(addresses).count(separator);
    return items > 0 && items == entitiesUndone(names).count(separator);
}

QString entitiesUndone(QString text)
{
    return text.replace(QLatin1String("&lt;"), QLatin1String("<"))
        .replace(QLatin1String("&amp;"), QLatin1String("&"))
        .replace(QLatin1String("&nbsp;"), QLatin1String(" "));
}
