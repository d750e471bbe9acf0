#include "scan/default_location.h"

#include "scan/store_kinds.h"

QString defaultLocation(const StoreKind &kind, const QString &user)
{
    if (!kind.defaultLocation)
        return QString();
    const bool administrator = user == QLatin1String("root");
    return (administrator ? QStringLiteral("/private/var/") : QStringLiteral("/Users/")) + user +
           QLatin1String(kind.defaultLocation);
}
