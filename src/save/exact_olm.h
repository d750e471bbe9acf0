#pragma once

#include "app/olm_records.h"
#include "platform/byte_source.h"
#include "save/exact_message.h"

/// Appends a message of an .olm file to a mailbox, composed from its XML: all of its subject, people, dates, ids and
/// body in UTF-8, its attachments wherever they stand in the archive (RFC 5322, RFC 2045 to 2047, RFC 2231). An
/// attachment that the archive doesn't have is left out, told, and counted among the empty parts. Attachments pass
/// through in pieces; the XML of one message is held.
ExactMessageCopy copyOlmMessageExactly(const MailMLRC &record, ByteSource *archive, MailboxFile *target,
                                       const std::function<bool()> &goOn);
