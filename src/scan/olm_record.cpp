#include "scan/olm_record.h"

#include "text/date_rules.h"
#include "text/latin1_line.h"
#include "text/line_bytes.h"
#include "text/semicolon_list.h"

#include <QUuid>

#include <algorithm>

namespace
{
constexpr std::string_view messageEnd = "</email>";
constexpr qint64 lastTagBytes = 9;    // "</emails>", behind the last message
constexpr qint64 restOfStartTag = 22; // ` xml:space="preserve">`

/// What is known while a message is read.
struct Message {
    std::string_view bytes;
    qint64 start; ///< in the archive
    OlmPendingAttachments *pending;
    MailMLRC *record;
    bool needsId = false; ///< the id in the record is to be a generated one
    OlmAttachmentMatch attachments = OlmAttachmentMatch::NoList;
};

/// An element that was found: the positions of its tags, and its value.
struct Found {
    qint64 startTag;
    qint64 endTag;
    QString value; ///< trimmed, but for lists
};

template <int Width>
void store(FixedText<Width> *field, const QString &text, int longest = Width - 1)
{
    if (text.size() <= longest)
        field->set(text);
}

// The same for a field that a save writes; false if the text is too long.
template <int Width>
bool storeWritten(Message *message, FixedText<Width> *field, const QString &text, int longest = Width - 1)
{
    store(field, text, longest);
    if (text.size() <= longest)
        return true;
    ++message->record->losses.fields;
    return false;
}

// Counts the characters of a text that a save will write.
void countCharacters(Message *message, const QString &text)
{
    const Latin1Counts counts = latin1Counts(text);
    message->record->losses.lostCharacters += static_cast<qint32>(counts.lost);
    message->record->losses.highCharacters += static_cast<qint32>(counts.single);
}

template <int Width>
void storeText(Message *message, FixedText<Width> *field, const QString &text)
{
    if (storeWritten(message, field, text))
        countCharacters(message, text);
}

template <int Width>
void storeTime(Message *message, FixedText<Width> *field, const QString &value)
{
    if (value.size() <= Width - 1)
        field->set(timeconverter1(value));
    else
        ++message->record->losses.fields;
}

// Four line feeds are what a line break in a header becomes.
QString unfolded(QString value)
{
    return value.replace(QLatin1String("\n\n\n\n"), QLatin1String(" "));
}

void readBody(Message *message, const Found &found)
{
    constexpr qint64 startTagBytes = 19;
    message->record->llBodySize = found.endTag - found.startTag - restOfStartTag - startTagBytes;
    message->record->llBodyOffset = message->start + found.endTag - message->record->llBodySize;
}

void readAttachments(Message *message, const Found &found)
{
    const OlmAttachmentLists lists = olmAttachments(found.value);
    MailMLRC *record = message->record;
    const QLatin1String itemEnd("</messageAttachment>");
    record->losses.attachments = found.value.count(itemEnd);
    if (message->pending->belongTo(lists)) {
        record->losses.attachments -= lists.names.count(QLatin1Char(';'));
        countCharacters(message, lists.contentIds + lists.contentTypes + lists.names);
        record->pAttachContentIds = lists.contentIds.toLatin1();
        record->pAttachContentTypes = lists.contentTypes.toLatin1();
        record->pAttachNames = lists.names.toLatin1();
        record->pAttachUrls = lists.urls.toLatin1();
        record->pAttachSizes = message->pending->sizes.toLatin1();
        record->pAttachOffsets = message->pending->offsets.toLatin1();
        message->attachments = OlmAttachmentMatch::Claimed;
    } else if (record->losses.attachments > 0) {
        message->attachments = OlmAttachmentMatch::Lost;
    }
    message->pending->clear();
}

void readFrom(Message *message, const Found &found)
{
    constexpr int longest = 99;
    const OlmAddressLists lists = olmSenders(found.value, longest);
    const bool hasAddress = storeWritten(message, &message->record->szFromAddress, lists.addresses, longest);
    const bool hasName = storeWritten(message, &message->record->szFromName, lists.names, longest);
    if (hasAddress)
        countCharacters(message, lastItem(lists.addresses) + (hasName ? lastItem(lists.names) : QString()));
}

template <int Width>
void storeRecipients(Message *message, FixedText<Width> *addresses, FixedText<Width> *names,
                     const OlmAddressLists &lists, int longest)
{
    const bool hasAddresses = storeWritten(message, addresses, lists.addresses, longest);
    const bool hasNames = storeWritten(message, names, lists.names, longest);
    if (hasAddresses && hasNames && correspond(lists.addresses, lists.names))
        countCharacters(message, lists.addresses + lists.names);
}

void readTo(Message *message, const Found &found)
{
    constexpr int longest = 2999;
    const OlmAddressLists lists = olmRecipients(found.value);
    storeRecipients(message, &message->record->szToAddress, &message->record->szToName, lists, longest);
}

void readCc(Message *message, const Found &found)
{
    constexpr int longest = 3000;
    const OlmAddressLists lists = olmRecipients(found.value);
    storeRecipients(message, &message->record->szCcAddress, &message->record->szCcName, lists, longest);
}

void readBcc(Message *message, const Found &found)
{
    store(&message->record->szBccAddress, olmRecipients(found.value).addresses);
}

void readMessageId(Message *message, const Found &found)
{
    constexpr int longest = 254;
    message->record->losses.hasSourceId = true;
    QString id = entitiesUndone(found.value);
    if (!id.endsWith(QLatin1Char('>')))
        id.chop(1);
    if (id.size() > longest)
        return; // what was there before stays
    message->record->szMessageId.set(id);
    message->needsId = false;
}

void readPriority(Message *message, const Found &found)
{
    message->record->szPriority.set(found.value);
}

enum class Kind {
    Plain, ///< read where the trimmed value is not empty
    Id,    ///< likewise, and asks for a generated id only where it is empty
    Body,  ///< read with or without a value
    List,  ///< not trimmed, read with or without a value; asks for no generated id
};

/// An element of a message.
struct Element {
    std::string_view name;
    Kind kind;
    void (*read)(Message *, const Found &);
};

// In the order in which they are read: each element that asks for an id replaces what was there.
const Element elements[] = {
    {"OPFMessageCopyBody", Kind::Body, readBody},
    {"OPFMessageCopyAttachmentList", Kind::List, readAttachments},
    {"OPFMessageCopyFromAddresses", Kind::List, readFrom},
    {"OPFMessageCopyToAddresses", Kind::List, readTo},
    {"OPFMessageCopySentTime", Kind::Plain,
     [](Message *m, const Found &f) { storeTime(m, &m->record->szSentTime, f.value); }},
    {"OPFMessageCopySubject", Kind::Plain,
     [](Message *m, const Found &f) {
         storeText(m, &m->record->szSubject, entitiesUndone(unfolded(f.value)));
     }},
    {"OPFMessageCopyThreadTopic", Kind::Plain,
     [](Message *m, const Found &f) { storeText(m, &m->record->szThreadTopic, unfolded(f.value)); }},
    {"OPFMessageCopyMessageID", Kind::Id, readMessageId},
    {"OPFMessageCopyReferences", Kind::Plain,
     [](Message *m, const Found &f) { store(&m->record->szReferences, f.value); }},
    {"OPFMessageCopyInReplyTo", Kind::Plain,
     [](Message *m, const Found &f) { store(&m->record->szInReplyTo, entitiesUndone(f.value)); }},
    {"OPFMessageCopyCCAddresses", Kind::List, readCc},
    {"OPFMessageCopyBCCAddresses", Kind::List, readBcc},
    {"OPFMessageCopyReceivedTime", Kind::Plain,
     [](Message *m, const Found &f) { storeTime(m, &m->record->szReceivedTime, f.value); }},
    {"OPFMessageIsOutgoing", Kind::Plain,
     [](Message *m, const Found &f) { m->record->iIsOutgoing = f.value.toInt(); }},
    {"OPFMessageGetPriority", Kind::Plain, readPriority},
};
constexpr size_t elementCount = sizeof elements / sizeof elements[0];

/// First positions of each element's tags, in bytes; -1 where there is none.
struct TagPlaces {
    qint64 start[elementCount];
    qint64 end[elementCount];
};

TagPlaces findTags(std::string_view message)
{
    TagPlaces places;
    std::fill_n(places.start, elementCount, -1);
    std::fill_n(places.end, elementCount, -1);
    for (size_t at = message.find('<'); at != std::string_view::npos; at = message.find('<', at + 1)) {
        const bool closes = startsWith(message.substr(at), "</");
        const std::string_view rest = message.substr(at + (closes ? 2 : 1));
        if (!startsWith(rest, "OPFMessage"))
            continue;
        for (size_t i = 0; i < elementCount; ++i) {
            qint64 &place = (closes ? places.end : places.start)[i];
            const std::string_view name = elements[i].name;
            if (place < 0 && startsWith(rest, name) && (!closes || startsWith(rest.substr(name.size()), ">")))
                place = static_cast<qint64>(at);
        }
    }
    return places;
}

// A length below 0, where the tags stand closer together than the start tag should be long, means: up to the end.
QString textAt(std::string_view message, qint64 start, qint64 length)
{
    const auto size = static_cast<qint64>(message.size());
    if (start >= size)
        return {};
    const qint64 taken = length < 0 ? size - start : qMin(length, size - start);
    return QString::fromUtf8(message.data() + start, static_cast<int>(taken));
}

void readElement(const Element &element, Found *found, Message *message)
{
    if (element.kind != Kind::Body) {
        const qint64 valueStart =
            found->startTag + 1 + static_cast<qint64>(element.name.size()) + restOfStartTag;
        found->value = textAt(message->bytes, valueStart, found->endTag - valueStart);
    }
    const bool needsValue = element.kind == Kind::Plain || element.kind == Kind::Id;
    if (needsValue)
        found->value = found->value.trimmed();
    const bool empty = found->value.isEmpty();
    if (element.kind == Kind::Plain || element.kind == Kind::Body || (element.kind == Kind::Id && empty))
        message->needsId = true;
    if (!needsValue || !empty)
        element.read(message, *found);
}

QString generatedId()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}
} // namespace

QByteArray olmText(const QByteArray &xml)
{
    const bool ascii = std::all_of(xml.begin(), xml.end(), [](char byte) { return byte >= 0; });
    return ascii ? xml : QString::fromUtf8(xml).toUtf8();
}

void forEachOlmMessage(const QByteArray &text, qint64 end,
                       const std::function<void(std::string_view, qint64)> &use)
{
    const std::string_view bytes(text.constData(), static_cast<size_t>(text.size()));
    const size_t last = bytes.rfind(messageEnd);
    if (last == std::string_view::npos)
        return;
    const qint64 textStart = end - lastTagBytes - static_cast<qint64>(last + messageEnd.size());
    for (size_t start = 0; start <= last;) {
        const size_t stop = bytes.find(messageEnd, start);
        use(bytes.substr(start, stop - start), textStart + static_cast<qint64>(start));
        start = stop + messageEnd.size();
    }
}

OlmAttachmentMatch readOlmMessage(std::string_view bytes, qint64 start, OlmPendingAttachments *pending,
                                  MailMLRC *record)
{
    Message message{bytes, start, pending, record};
    const TagPlaces places = findTags(bytes);
    for (size_t i = 0; i < elementCount; ++i) {
        if (places.start[i] < 0 || places.end[i] < 0)
            continue;
        Found found{places.start[i], places.end[i], QString()};
        readElement(elements[i], &found, &message);
    }
    if (message.needsId)
        record->szMessageId.set(generatedId());
    return message.attachments;
}
