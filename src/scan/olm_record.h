#pragma once

#include "app/olm_records.h"
#include "scan/olm_items.h"

#include <QByteArray>

#include <functional>
#include <string_view>

/// Bytes of an .olm file's XML as text, written again as UTF-8: a byte order mark at the start goes, and each
/// invalid byte takes three. Positions in a message count in these bytes.
QByteArray olmText(const QByteArray &xml);

/// Calls `use` for each message of a text (see olmText), in order: the bytes before each "</email>", and where
/// they begin in the archive, counted back from `end`, the position just behind the text.
void forEachOlmMessage(const QByteArray &text, qint64 end,
                       const std::function<void(std::string_view message, qint64 start)> &use);

/// Whether a message's attachment list met its attachments.
enum class OlmAttachmentMatch { NoList, Claimed, Lost };

/// Fills the record's fields from a message's XML. No XML parser: fifteen elements are looked for by name, with a
/// fixed distance between a start tag's name and the value. `start`: where the message begins in the archive. A
/// message with an attachment list claims the pending attachments, or empties them where they aren't its own.
OlmAttachmentMatch readOlmMessage(std::string_view message, qint64 start, OlmPendingAttachments *pending,
                                  MailMLRC *record);
