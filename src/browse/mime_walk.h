#pragma once

#include "browse/preview_dialect.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <string_view>

/// What a preview takes out of a message (RFC 5322, RFC 2045) by fixed patterns; no MIME tree is built. Views
/// point into the message's bytes.
struct WalkedMessage {
    /// Each header's value, raw: all that stands behind the colon, folded lines and the last line end included.
    std::array<std::optional<std::string_view>, fieldCount> fields;
    QString Base; ///< what stands behind "Content-Transfer-Encoding:" in force, blank and line end included
    QString charset;   ///< the charset in force; without quotation marks its line end stays
    QStringList names; ///< names of attachments in the order found
    int nameLines = 0; ///< how many lines of the header pane show them
    std::optional<std::string_view> body; ///< from the blank line above the text to the end of the message
    bool bHtmlFileFound = false;          ///< the text ends at a boundary; it need not be HTML

    const std::optional<std::string_view> &field(Field name) const
    {
        return fields[static_cast<size_t>(name)];
    }
};

/// Walks over the bytes of one message. Never fails; what is not found is empty. Takes time that grows with the
/// message's size alone.
WalkedMessage walkMessage(std::string_view source, const PreviewDialect &dialect);
