#pragma once

#include "app/olm_records.h"
#include "platform/byte_source.h"
#include "save/exact_message.h"
#include "text/transfer_encoding.h"

#include <QStringList>

#include <functional>

/// What came of composing a message.
struct ComposedMessage {
    ExactMessageCopy result;
    QStringList problems; ///< sentences for the user
};

/// Gives a message of an .olm file in the form mboxrd, separator first, composed from its XML: all of its subject,
/// people, dates, ids and body in UTF-8, its attachments wherever they stand in the archive (RFC 5322, RFC 2045 to 2047,
/// RFC 2231). An attachment that the archive doesn't have is left out, told, and counted among the empty parts.
/// Attachments pass through in pieces, bodies of more than 1 MiB too. `goOn`: false stops it.
ComposedMessage composeOlmMessage(const MailMLRC &record, ByteSource *archive,
                                  const std::function<bool()> &goOn, const TakeBytes &give);
