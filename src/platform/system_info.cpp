#include "platform/system_info.h"

#include <QFile>
#include <QMap>
#include <QSysInfo>

namespace
{

/// A value of a shell assignment: the quotes around it taken off, a backslash before a character removed.
QString unquoted(QByteArray value)
{
    value = value.trimmed();
    if (value.size() > 1 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
        value = value.mid(1, value.size() - 2);
    QByteArray plain;
    for (int i = 0; i < value.size(); ++i) {
        if (value.at(i) == '\\' && i + 1 < value.size())
            ++i;
        plain.append(value.at(i));
    }
    return QString::fromUtf8(plain);
}

#ifdef Q_OS_DARWIN

SystemInfo namedSystem()
{
    return {QStringLiteral("MAC OS X"), QSysInfo::productVersion()};
}

#else

SystemInfo namedSystem()
{
    for (const char *path : {"/etc/os-release", "/usr/lib/os-release"}) {
        QFile file(QString::fromLatin1(path));
        if (file.open(QIODevice::ReadOnly))
            return parseOsRelease(file.readAll());
    }
    return {};
}

#endif

} // namespace

SystemInfo parseOsRelease(const QByteArray &text)
{
    QMap<QByteArray, QString> values;
    for (const QByteArray &line : text.split('\n')) {
        const int equals = line.indexOf('=');
        if (equals > 0)
            values.insert(line.left(equals).trimmed(), unquoted(line.mid(equals + 1)));
    }
    const QString version = values.value("VERSION");
    return {values.value("NAME"), version.isEmpty() ? values.value("VERSION_ID") : version};
}

SystemInfo systemInfo()
{
    SystemInfo info = namedSystem();
    if (info.name.isEmpty())
        info.name = QSysInfo::kernelType();
    if (info.version.isEmpty())
        info.version = QSysInfo::kernelVersion();
    return info;
}
