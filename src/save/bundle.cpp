#include "save/bundle.h"

#include <QFile>

#include <filesystem>

void setTargetBundle(const Bundle &bundle)
{
    for (const Bundle *each : {&outlookBundle, &appleBundle})
        *each->isTarget = each == &bundle;
}

QString bundlePath(const Bundle &bundle, const QString &folder)
{
    return folder + QLatin1Char('/') + QLatin1String(bundle.name);
}

qint64 freeBytesIn(const QString &folder)
{
    // Asked of the folder itself: the toolkit looks among the mounted disks, which name none in a changed root.
    std::error_code error;
    const std::filesystem::space_info space =
        std::filesystem::space(QFile::encodeName(folder).toStdString(), error);
    return error ? -1 : static_cast<qint64>(space.available);
}
