#include "scan/olm_walk.h"

#include "text/read_buffer.h"

#include <QStringList>

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

namespace
{
constexpr std::string_view localSignature("PK\3\4", 4);
constexpr std::string_view centralSignature("PK\1\2", 4);
constexpr std::string_view endSignature("PK\5\6", 4);
constexpr qint64 endRecordBytes = 22;
constexpr qint64 longestComment = 65535;
constexpr qint64 centralHeaderBytes = 46; // without name, extra field and comment
constexpr int centralHeadersAtEnd = 3;    // so many in a row are the central directory
constexpr size_t headerBytes = 30;
constexpr size_t zip64Bytes = 20; // ZIP64 extended information: id, length, both sizes
constexpr quint64 sizeIsElsewhere = 0xFFFFFFFF;

constexpr std::string_view passedOverNames[] = {"Categories.xml", "Contacts.xml", "Calendar.xml", "Tasks.xml",
                                                "Notes.xml"};

/// An XML element that the walk knows outside of entries.
struct Element {
    std::string_view startTag;
    std::string_view endTag;
    bool holdsMail;
};
constexpr Element elements[] = {
    {"<emails ", "</emails>", true},
    {"<notes ", "</notes>", false},
    {"<tasks ", "</tasks>", false},
    {"<contacts ", "</contacts>", false},
    {"<appointments ", "</appointments>", false},
};
constexpr size_t longestStartTag = 14;

// Folders below this depth are not made. A path that deep is too long for a message's record anyway, and each level
// costs more than its byte in the archive.
constexpr int deepestFolder = 1025;

quint64 littleEndian(std::string_view bytes, size_t at, size_t count)
{
    quint64 value = 0;
    for (size_t i = count; i-- > 0;)
        value = value << 8 | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0);
    return value;
}

bool startsWith(std::string_view bytes, std::string_view start)
{
    return bytes.substr(0, start.size()) == start;
}

bool startsSomething(char byte)
{
    return byte == '<' || byte == 'P';
}

/// What a local header says of its entry; positions and sizes in bytes.
struct Entry {
    QString name;
    qint64 behindHeader = 0;
    qint64 data = 0; ///< where its bytes are read
    qint64 size = 0; ///< how many
    qint64 next = 0; ///< where the walk goes on
    bool usable = false;
    bool compressed = false;
};

class Walk
{
public:
    Walk(ByteSource *archive, const OlmWalkEvents &events)
        : m_archive(archive), m_events(events), m_buffer(archive), m_size(archive->size())
    {
    }
    OlmWalkResult run();

private:
    void step();
    void searchOn();
    bool hasEndRecord();
    bool isCentralDirectoryWhole();
    void crossEntry();
    void crossHeader(const Entry &entry);
    Entry readEntry(std::string_view header);
    void useEntry(const Entry &entry);
    void tellEntry(const QString &name, qint64 offset, qint64 size) const;
    bool crossElement();
    qint64 endOfElement(const Element &element, qint64 start);
    void giveMessages(qint64 start, qint64 length, const QString &folder, qint64 end);
    bool readText(qint64 start, qint64 length, QByteArray *text);

    ByteSource *m_archive;
    const OlmWalkEvents &m_events;
    ReadBuffer m_buffer;
    qint64 m_size;
    qint64 m_position = 0;
    int m_centralHeaders = 0;   ///< since the last entry or element
    qint64 m_centralStart = -1; ///< where the first of them stands
    OlmWalkResult m_result;
};

OlmWalkResult Walk::run()
{
    do {
        if (!m_events.goOn(m_position)) {
            m_result.stopped = true;
            break;
        }
        step();
    } while (m_position < m_size);
    m_result.cutOff = !m_result.stopped && !hasEndRecord() && !isCentralDirectoryWhole();
    return m_result;
}

// The record that ends an archive, with nothing but a comment behind it.
bool Walk::hasEndRecord()
{
    std::vector<char> tail(static_cast<size_t>(std::min(m_size, endRecordBytes + longestComment)));
    const qint64 start = m_size - static_cast<qint64>(tail.size());
    const qint64 taken = m_archive->read(start, tail.data(), static_cast<qint64>(tail.size()));
    const std::string_view bytes(tail.data(), static_cast<size_t>(taken));
    const size_t found = bytes.rfind(endSignature);
    return found != std::string_view::npos && bytes.size() - found >= static_cast<size_t>(endRecordBytes);
}

// Central headers, one behind the other, that reach just to the end of the archive: some writers leave out the record.
bool Walk::isCentralDirectoryWhole()
{
    qint64 position = m_centralStart;
    while (position >= 0 && position < m_size) {
        const std::string_view header = m_buffer.at(position, static_cast<size_t>(centralHeaderBytes));
        if (header.substr(0, centralSignature.size()) != centralSignature)
            return false;
        position += centralHeaderBytes;
        for (const size_t lengthAt : {size_t{28}, size_t{30}, size_t{32}})
            position += static_cast<qint64>(littleEndian(header, lengthAt, 2));
    }
    return position == m_size;
}

void Walk::step()
{
    const std::string_view signature = m_buffer.at(m_position, localSignature.size());
    if (signature == localSignature) {
        crossEntry();
    } else if (signature == centralSignature) {
        if (m_centralHeaders == 0)
            m_centralStart = m_position;
        ++m_position;
        if (++m_centralHeaders == centralHeadersAtEnd)
            m_position = m_size;
    } else if (crossElement()) {
        m_centralHeaders = 0;
    } else {
        searchOn();
    }
}

// On to the next byte that can start a signature or a tag, or to the end of what is buffered.
void Walk::searchOn()
{
    const std::string_view bytes = m_buffer.from(m_position);
    if (bytes.empty()) {
        m_position = m_size;
        return;
    }
    m_position += std::find_if(bytes.begin(), bytes.end(), startsSomething) - bytes.begin();
}

void Walk::crossEntry()
{
    char header[headerBytes] = {}; // what is missing at the end of the archive reads as zero
    const std::string_view bytes = m_buffer.at(m_position, headerBytes);
    std::copy(bytes.begin(), bytes.end(), header);
    const Entry entry = readEntry(std::string_view(header, headerBytes));
    if (!entry.usable) {
        crossHeader(entry);
        return;
    }
    m_position = entry.next;
    m_centralHeaders = 0;
    useEntry(entry);
}

// An entry that can't be stepped over: what stands behind its header is looked at, and counts as handled. Where that is
// another header, the entry has no bytes.
void Walk::crossHeader(const Entry &entry)
{
    m_position = entry.behindHeader;
    const std::string_view next = m_buffer.at(m_position, localSignature.size());
    if (next == localSignature || next == centralSignature)
        tellEntry(entry.name, entry.behindHeader, 0);
    if (next != localSignature)
        crossElement();
    m_centralHeaders = 0;
}

// The sizes stand in the extra field; where that is too short for them, those of the header itself hold.
Entry Walk::readEntry(std::string_view header)
{
    const size_t nameBytes = static_cast<size_t>(littleEndian(header, 26, 2));
    const size_t extraBytes = static_cast<size_t>(littleEndian(header, 28, 2));
    Entry entry;
    entry.behindHeader = m_position + static_cast<qint64>(headerBytes + nameBytes + extraBytes);
    const qint64 behindName = m_position + static_cast<qint64>(headerBytes + nameBytes);
    const std::string_view tail =
        m_buffer.at(m_position + static_cast<qint64>(headerBytes), nameBytes + zip64Bytes);
    const std::string_view name = tail.substr(0, nameBytes);
    entry.name = QString::fromUtf8(name.data(), static_cast<int>(std::min(name.find('\0'), name.size())));

    if (littleEndian(header, 14, 4) == 0)
        return entry;
    const bool zip64 = extraBytes >= zip64Bytes;
    const quint64 size = zip64 ? littleEndian(tail, nameBytes + 4, 8) : littleEndian(header, 22, 4);
    const quint64 stored = zip64 ? littleEndian(tail, nameBytes + 12, 8) : littleEndian(header, 18, 4);
    const auto farthest = static_cast<quint64>(std::numeric_limits<qint64>::max() - entry.behindHeader);
    entry.usable = stored <= farthest && (zip64 || (size != sizeIsElsewhere && stored != sizeIsElsewhere));
    if (!entry.usable)
        return entry;
    entry.data = zip64 ? behindName + static_cast<qint64>(zip64Bytes) : entry.behindHeader;
    entry.size = static_cast<qint64>(size);
    entry.next = entry.behindHeader + static_cast<qint64>(stored);
    entry.compressed = size != stored;
    return entry;
}

void Walk::useEntry(const Entry &entry)
{
    // Wraps where the size is absurd; whoever reads the entry meets a position outside the archive.
    const auto offset =
        static_cast<qint64>(static_cast<quint64>(entry.next) - static_cast<quint64>(entry.size));
    const QStringList components = entry.name.split(QLatin1Char('/'));
    const QString &last = components.last();
    const bool isMessage =
        last.contains(QLatin1String("__message_attachment__")) && last.contains(QLatin1String(".xml"));
    if (!isMessage && !entry.compressed)
        tellEntry(entry.name, offset, entry.size);
    for (const std::string_view name : passedOverNames)
        if (components.contains(QLatin1String(name.data(), static_cast<int>(name.size()))))
            return;
    m_result.compressed += entry.compressed ? 1 : 0;
    if (entry.compressed && m_events.compressed)
        m_events.compressed(entry.name);
    if (isMessage)
        giveMessages(entry.data, entry.size, olmFolderOfEntry(entry.name), entry.next);
    else
        m_events.attachment(entry.name, offset, entry.size);
}

void Walk::tellEntry(const QString &name, qint64 offset, qint64 size) const
{
    if (m_events.entry)
        m_events.entry(name, offset, size);
}

// Where nothing matches the walk goes on one byte further.
bool Walk::crossElement()
{
    const qint64 start = m_position++;
    const std::string_view bytes = m_buffer.at(start, longestStartTag);
    for (const Element &element : elements) {
        if (!startsWith(bytes, element.startTag))
            continue;
        const qint64 end = endOfElement(element, start);
        if (element.holdsMail)
            giveMessages(start, end - start, QString(), end);
        m_position = end;
        return true;
    }
    return false;
}

// Just behind the end tag. An element without one reaches past the end of the archive, by the length of its tags,
// so there is no second search for an end tag that doesn't come.
qint64 Walk::endOfElement(const Element &element, qint64 start)
{
    const qint64 behindTag = start + static_cast<qint64>(element.startTag.size());
    const size_t tagBytes = element.endTag.size();
    for (qint64 position = behindTag;;) {
        const std::string_view bytes = m_buffer.from(position, tagBytes);
        if (const size_t found = bytes.find(element.endTag); found != std::string_view::npos)
            return position + static_cast<qint64>(found + tagBytes);
        if (bytes.size() < tagBytes)
            return behindTag + m_size + static_cast<qint64>(tagBytes);
        position += static_cast<qint64>(bytes.size() - tagBytes + 1);
    }
}

void Walk::giveMessages(qint64 start, qint64 length, const QString &folder, qint64 end)
{
    QByteArray text;
    if (!readText(start, length, &text)) {
        ++m_result.tooLong;
        text.clear();
    }
    m_events.messages({&text, folder, start, end});
}

// Reads up to the first zero byte, which ends the text whatever its length says; header fields hold zero bytes, so
// that texts with a false length don't add up to more than the archive.
bool Walk::readText(qint64 start, qint64 length, QByteArray *text)
{
    length = qMin(length, m_size - start);
    qint64 block = static_cast<qint64>(ReadBuffer::largestBlock) / 4;
    for (qint64 done = 0; done < length; block = qMin(block * 2, length - done)) {
        const auto wanted = static_cast<int>(qMin(block, length - done));
        text->resize(static_cast<int>(done) + wanted);
        char *to = text->data() + done;
        const auto taken = static_cast<int>(m_archive->read(start + done, to, wanted));
        const void *zero = std::memchr(to, 0, static_cast<size_t>(taken));
        done += zero ? static_cast<const char *>(zero) - to : taken;
        text->truncate(static_cast<int>(done));
        if (zero || taken < wanted)
            return true;
        if (done >= largestOlmText)
            return false;
    }
    return true;
}
} // namespace

OlmWalkResult walkOlm(ByteSource *archive, const OlmWalkEvents &events)
{
    return Walk(archive, events).run();
}

QString olmFolderOfEntry(const QString &name)
{
    const QStringList components = name.split(QLatin1Char('/'));
    const QString &first = components.first();
    const int before = first == QLatin1String("Accounts") ? 3 : first == QLatin1String("Local") ? 2 : 0;
    const int count = qMin(components.size() - before - 1, deepestFolder);
    return before > 0 && count > 0 ? components.mid(before, count).join(QLatin1Char('/')) : QString();
}
