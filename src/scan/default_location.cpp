#include "scan/default_location.h"

#include "scan/store_kinds.h"

#include <QFileInfo>
#include <QHash>
#include <QStorageInfo>

namespace
{
// Below the home folder: as the distribution, a snap and a Flatpak have them.
const QHash<QString, QStringList> &placesOfClients()
{
    static const QHash<QString, QStringList> places{
        {QStringLiteral("thunderbird"),
         {QStringLiteral("/.thunderbird"), QStringLiteral("/snap/thunderbird/common/.thunderbird"),
          QStringLiteral("/.var/app/org.mozilla.Thunderbird/.thunderbird")}},
        {QStringLiteral("seamonkey"), {QStringLiteral("/.mozilla/seamonkey")}},
        {QStringLiteral("opera"), {QStringLiteral("/.opera"), QStringLiteral("/.opera/mail")}},
    };
    return places;
}

bool isUsersDisk(const QStorageInfo &disk)
{
    const QString path = disk.rootPath();
    return disk.isReady() &&
           (path.startsWith(QLatin1String("/media/")) || path.startsWith(QLatin1String("/run/media/")) ||
            path.startsWith(QLatin1String("/mnt/")) || path.startsWith(QLatin1String("/Volumes/")));
}
} // namespace

QString defaultLocation(const StoreKind &kind, const QString &user)
{
    if (!kind.defaultLocation)
        return QString();
    const bool administrator = user == QLatin1String("root");
    return (administrator ? QStringLiteral("/private/var/") : QStringLiteral("/Users/")) + user +
           QLatin1String(kind.defaultLocation);
}

QStringList usualPlaces(const StoreKind &kind, const QString &home)
{
    QStringList found;
    QStringList below = placesOfClients().value(QLatin1String(kind.cliName));
    if (kind.defaultLocation)
        below.append(QLatin1String(kind.defaultLocation));
    for (const QString &place : qAsConst(below))
        if (QFileInfo(home + place).isDir())
            found.append(home + place);
    for (const QStorageInfo &disk : QStorageInfo::mountedVolumes())
        if (isUsersDisk(disk))
            found.append(disk.rootPath());
    return found;
}
