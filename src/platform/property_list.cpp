#include "platform/property_list.h"

#ifndef Q_OS_DARWIN

#include <QXmlStreamReader>

namespace
{

// All text of an element, of those within it too. The toolkit's own way goes down into each, so that a file of nothing
// but "<a><a><a>..." would overflow the stack.
QString readText(QXmlStreamReader &xml)
{
    QString text;
    for (int depth = 1; depth > 0 && !xml.atEnd();) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::StartElement)
            ++depth;
        else if (token == QXmlStreamReader::EndElement)
            --depth;
        else if (token == QXmlStreamReader::Characters || token == QXmlStreamReader::EntityReference)
            text += xml.text();
    }
    return text;
}

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
    return readText(xml);
}

void readDictionary(QXmlStreamReader &xml, QSettings::SettingsMap &entries)
{
    QString key;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("key")) {
            key = readText(xml);
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
