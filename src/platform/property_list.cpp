#include "platform/property_list.h"

#ifndef Q_OS_DARWIN

#include <QXmlStreamReader>

namespace
{

/// The text of a value element; a null string for a container. The reader stands behind it afterwards.
QString readValue(QXmlStreamReader &xml)
{
    const QStringRef type = xml.name();
    if (type == QLatin1String("true") || type == QLatin1String("false")) {
        const QString value = type.toString();
        xml.skipCurrentElement();
        return value;
    }
    if (type == QLatin1String("dict") || type == QLatin1String("array")) {
        xml.skipCurrentElement();
        return QString();
    }
    return xml.readElementText(QXmlStreamReader::IncludeChildElements);
}

void readDictionary(QXmlStreamReader &xml, QSettings::SettingsMap &entries)
{
    QString key;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("key")) {
            key = xml.readElementText(QXmlStreamReader::IncludeChildElements);
            continue;
        }
        const QString value = readValue(xml);
        if (!key.isEmpty() && !value.isNull())
            entries.insert(key, value);
        key.clear(); // a value without a key of its own belongs to nothing
    }
}

bool readPropertyList(QIODevice &device, QSettings::SettingsMap &entries)
{
    QXmlStreamReader xml(&device);
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("plist"))
        return false;
    if (xml.readNextStartElement() && xml.name() == QLatin1String("dict"))
        readDictionary(xml, entries);
    while (!xml.atEnd())
        xml.readNext(); // what is broken further down makes the whole file broken
    return !xml.hasError();
}

} // namespace

QSettings::Format propertyListFormat()
{
    static const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("plist"), readPropertyList, nullptr, Qt::CaseSensitive);
    return format;
}

#else

QSettings::Format propertyListFormat()
{
    return QSettings::NativeFormat;
}

#endif
