#pragma once

// Builds .olm archives byte by byte.

#include <QByteArray>
#include <QList>

/// A number in `bytes` little-endian bytes.
inline QByteArray littleEndian(quint64 value, int bytes)
{
    QByteArray text;
    for (; bytes > 0; --bytes, value >>= 8)
        text += static_cast<char>(value & 0xFF);
    return text;
}

/// What an entry's header says; sizes below 0 stand for those of its data.
struct OlmEntry {
    QByteArray name;
    QByteArray data;
    quint32 crc = 0x12345678;
    int extraBytes = 20; ///< below 20: no ZIP64 sizes, those of the header hold
    qint64 size = -1;
    qint64 storedSize = -1;
};

inline QByteArray olmEntry(const OlmEntry &entry)
{
    const auto size = static_cast<quint64>(entry.size < 0 ? entry.data.size() : entry.size);
    const auto stored = static_cast<quint64>(entry.storedSize < 0 ? entry.data.size() : entry.storedSize);
    const bool zip64 = entry.extraBytes >= 20;
    const QByteArray sizes =
        littleEndian(1, 2) + littleEndian(16, 2) + littleEndian(size, 8) + littleEndian(stored, 8);
    return QByteArray("PK\3\4", 4) + littleEndian(20, 2) + QByteArray(8, '\0') + littleEndian(entry.crc, 4) +
           littleEndian(zip64 ? 0xFFFFFFFF : stored, 4) + littleEndian(zip64 ? 0xFFFFFFFF : size, 4) +
           littleEndian(static_cast<quint64>(entry.name.size()), 2) +
           littleEndian(static_cast<quint64>(entry.extraBytes), 2) + entry.name +
           (zip64 ? sizes : QByteArray()) +
           QByteArray(zip64 ? entry.extraBytes - 20 : entry.extraBytes, 'x') + entry.data;
}

/// An entry without contents and without a CRC.
inline QByteArray olmDirectory(const QByteArray &name)
{
    return olmEntry({name, QByteArray(), 0, 0});
}

inline QByteArray centralHeader()
{
    return QByteArray("PK\1\2", 4) + QByteArray(42, '\0');
}

/// An element of a message, its start tag as long as the reader takes it to be.
inline QByteArray olmElement(const QByteArray &name, const QByteArray &value)
{
    return "<" + name + " xml:space=\"preserve\">" + value + "</" + name + ">";
}

inline QByteArray olmCopy(const QByteArray &name, const QByteArray &value)
{
    return olmElement("OPFMessageCopy" + name, value);
}

inline QByteArray olmAddress(const QByteArray &address, const QByteArray &name = QByteArray())
{
    const QByteArray named = name.isNull() ? QByteArray() : " OPFContactEmailAddressName=\"" + name + "\"";
    return "<emailAddress xml:space=\"preserve\" OPFContactEmailAddressAddress=\"" + address + "\"" + named +
           " OPFContactEmailAddressType=\"0\"></emailAddress>";
}

inline QByteArray olmAttachmentItem(const QByteArray &name, const QByteArray &url,
                                    const QByteArray &type = "text/plain",
                                    const QByteArray &id = QByteArray())
{
    return "<messageAttachment" + (id.isNull() ? QByteArray() : " OPFAttachmentContentID=\"" + id + "\"") +
           " OPFAttachmentContentType=\"" + type + "\" OPFAttachmentName=\"" + name +
           "\" OPFAttachmentURL=\"" + url + "\"></messageAttachment>";
}

/// The XML of an entry with these messages.
inline QByteArray olmXml(const QList<QByteArray> &messages)
{
    QByteArray xml = "<emails elementCount=\"1\">";
    for (const QByteArray &message : messages)
        xml += "<email>" + message + "</email>";
    return xml + "</emails>";
}

/// A message entry in a folder of "Local".
inline QByteArray olmMessageEntry(const QByteArray &folder, const QByteArray &xml)
{
    return olmEntry({"Local/box/" + folder + "/__message_attachment__1.xml", xml});
}

/// The same with one message of these elements.
inline QByteArray olmMail(const QByteArray &folder, const QByteArray &elements)
{
    return olmMessageEntry(folder, olmXml({elements}));
}
