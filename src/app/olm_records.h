#pragma once

// The records of an .olm file: one for each message, in a singly linked list in the order of the file. Only the
// append and free functions here touch `pNext`; they also keep the indexes that save a walk of the list for each
// folder or row.

#include <QByteArray>
#include <QString>

#include <vector>

/// Latin-1 text in a field of Width bytes, the terminator included. It takes the memory of its text alone: most
/// fields of most messages are nearly empty, and a store has many messages.
template <int Width>
class FixedText
{
public:
    /// True for a field that holds nothing.
    bool isEmpty() const { return m_bytes.isEmpty(); }
    /// The field as it is kept, and as text.
    const QByteArray &bytes() const { return m_bytes; }
    QString text() const { return QString::fromLatin1(m_bytes); }
    /// Takes the text as Latin-1 ("?" for what has no place in it), cut at the field's width.
    void set(const QString &text) { m_bytes = text.toLatin1().left(Width - 1); }

private:
    QByteArray m_bytes;
};

/// What of a message's source its record no longer shows, for the report of a save: of the fields that one writes.
struct OlmLosses {
    bool hasSourceId = false;  ///< the source names a message id
    qint32 fields = 0;         ///< values that were dropped, being over their limit
    qint32 attachments = 0;    ///< named, but not found
    qint32 lostCharacters = 0; ///< became "?"
    qint32 highCharacters = 0; ///< U+0080 to U+00FF, now one byte each
};

constexpr int folderFieldLimit = 1023;    ///< longest folder path in a record, UTF-16 units
constexpr qint64 noFolderId = 0xFFFFFFFE; ///< parent of a message outside all folders

/// One message of an .olm file. The lists are semicolon lists; those of the attachments correspond one to one.
struct MailMLRC {
    FixedText<355> szFromName;
    FixedText<100> szFromAddress;
    FixedText<3001> szToAddress;
    FixedText<3001> szCcAddress;
    FixedText<3001> szCcName;
    FixedText<2050> szBccAddress;
    FixedText<32> szReceivedTime; ///< as timeconverter1 writes it
    FixedText<100> szInReplyTo;
    FixedText<100> szReferences;
    FixedText<255> szMessageId; ///< the message's or a generated one
    FixedText<3001> szToName;
    FixedText<100> szThreadTopic;
    FixedText<1024> szSubject;
    FixedText<32> szSentTime;     ///< as timeconverter1 writes it
    QByteArray pAttachContentIds; ///< "no" for none; null, as those that follow, without attachments
    QByteArray pAttachContentTypes;
    QByteArray pAttachNames;
    QByteArray pAttachUrls;    ///< names of their entries in the archive
    QByteArray pAttachOffsets; ///< bytes from the start of the archive, decimal
    QByteArray pAttachSizes;   ///< bytes, decimal
    qint64 llBodySize = 0;     ///< bytes of the body's text in the archive; below 0 where tags lie too close
    qint64 llBodyOffset = 0;   ///< where it begins, bytes
    FixedText<folderFieldLimit + 1> szFolderPath;
    qint64 llParentId = 0; ///< the message's folder, or noFolderId
    qint32 iIsOutgoing = 0;
    FixedText<5> szPriority; ///< the four bytes that a text can fill
    OlmLosses losses;
    qint64 llXmlOffset = 0; ///< where the XML of the message begins in the archive, bytes
    qint64 llXmlSize = 0;   ///< its bytes, "</email>" included
    MailMLRC *pNext = nullptr;
};

/// Where an entry's bytes stand in the archive.
struct OlmEntryPlace {
    qint64 offset = -1; ///< bytes; -1: no such entry
    qint64 size = 0;    ///< bytes, as its header claims them
};

inline MailMLRC *TmpMlrcPtrStart = nullptr;
inline MailMLRC *TmpMlrcPtrEnd = nullptr;

/// Appends a complete record and counts it in MailItemCount.
MailMLRC *appendOlmRecord(MailMLRC &&record);
/// The records of one folder, in list order.
const std::vector<const MailMLRC *> &olmRecordsOfFolder(qint64 folderId);
/// The first record in the list with this body offset and size, in bytes, or null.
const MailMLRC *olmRecordOfBody(qint64 bodyOffset, quint64 bodySize);
/// Notes an entry that is no message; they come in the order of the archive.
void noteOlmEntry(const QString &name, const OlmEntryPlace &place);
/// The place of an entry by its name, whose Unicode form does not matter. Of several the last one before `position` in
/// the archive, in bytes, else the first one behind it.
OlmEntryPlace olmEntryPlace(const QString &name, qint64 position);
/// Frees all records and forgets the entries.
void freeOlmRecords();
