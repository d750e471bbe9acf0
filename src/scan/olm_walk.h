#pragma once

#include "platform/byte_source.h"

#include <QByteArray>
#include <QString>

#include <functional>

// The walk through an .olm file: a ZIP archive (APPNOTE.TXT, 4.3) whose entries are stored, not compressed. It goes
// forward from entry to entry by their local headers. Where something else stands it goes on byte by byte, to the
// next header or to an XML element that it knows. The central directory only ends it.

/// XML that may hold messages.
struct OlmText {
    QByteArray *xml = nullptr; ///< without zero bytes
    QString name;              ///< its entry's name, "" for an element between entries
    QString folder;            ///< folder path of its entry, "" where it has none
    qint64 start = 0;          ///< where it begins in the archive, bytes
    qint64 end = 0;            ///< just behind its entry or element
};

/// What a walk tells as it goes.
struct OlmWalkEvents {
    /// Before each step, often: the walk's position in bytes. False ends the walk.
    std::function<bool(qint64 position)> goOn;
    /// An attachment: its entry's name, and where its bytes stand.
    std::function<void(const QString &name, qint64 offset, qint64 size)> attachment;
    /// An entry or element that may hold messages; its XML is only there during the call.
    std::function<void(const OlmText &text)> messages;
    /// Any entry that is no message, one without bytes too, but not a compressed one. May be empty.
    std::function<void(const QString &name, qint64 offset, qint64 size)> entry;
    /// An entry whose contents are compressed, so that nothing of it can be read. May be empty.
    std::function<void(const QString &name)> compressed;
};

/// How a walk ended.
struct OlmWalkResult {
    bool stopped = false;  ///< by goOn
    qint64 compressed = 0; ///< entries that are not stored, whose contents can't be read
    qint64 tooLong = 0;    ///< texts above largestOlmText, passed over
    bool cutOff =
        false; ///< no central directory, or only a part of one, stands at the end: bytes are missing
};

/// The longest XML text of one entry or element that is looked at, in bytes.
constexpr qint64 largestOlmText = qint64{512} << 20;

/// Walks a whole archive. Sizes and lengths in it are not trusted: no more memory is taken than the source holds,
/// and each byte is looked at a few times at most.
OlmWalkResult walkOlm(ByteSource *archive, const OlmWalkEvents &events);

/// The folder of a message entry: what stands between the account's name and the last component of its name.
QString olmFolderOfEntry(const QString &name);
