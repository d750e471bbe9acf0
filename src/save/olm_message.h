#pragma once

#include "platform/byte_source.h"
#include "save/olm_header.h"

#include <functional>
#include <string_view>
#include <vector>

/// Writes the messages of an .olm file as mail (mbox, RFC 4155; MIME, RFC 2045 and 2046), with the header block that
/// Outlook for Mac gives what it sends. The bodies and attachments are read from the archive as they are written,
/// attachments in pieces. All attachments together are at most as long as the archive: what claims more is left
/// out.
class OlmComposer
{
public:
    /// Gets a message, piece by piece.
    using Write = std::function<void(std::string_view bytes)>;

    /// `archive`: where bodies and attachments are read, kept by the caller.
    explicit OlmComposer(ByteSource *archive) : m_archive(archive), m_attachmentBytesLeft(archive->size()) {}

    /// Writes one message. What the archive doesn't give of an attachment are zero bytes. False if the body or an
    /// attachment could not be read whole.
    bool compose(const MailMLRC &record, const OlmMarks &marks, const Write &write);

private:
    bool writeBody(const MailMLRC &record, const OlmMarks &marks, const Write &write);
    bool writeAttachments(const MailMLRC &record, const Write &write);
    bool writeBase64(qint64 offset, qint64 size, const Write &write);

    ByteSource *m_archive;
    qint64 m_attachmentBytesLeft;
    std::vector<char> m_piece; ///< of an attachment
    std::vector<char> m_encoded;
};

/// The number of its attachments that stand behind a boundary which no header declares.
int unreachableAttachments(const MailMLRC &record);
/// The HTML text of a body: the XML escapes undone, some twice; what is no HTML document becomes one line in one.
QByteArray olmHtml(QByteArray body);
