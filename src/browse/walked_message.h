#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <string_view>

/// What a preview takes out of a message (RFC 5322, RFC 2045) by fixed patterns; no MIME tree is built. Views
/// point into the message's bytes.
struct WalkedMessage {
    using Value = std::optional<std::string_view>;

    // Each header's value, raw: all that stands behind the colon, folded lines and the last line end included. "Cc:" and
    // "CC:" are told apart.
    Value FromFieldValue;
    Value ToFieldValue;
    Value SubjectFieldValue;
    Value CcFieldValue;
    Value CCFieldValue;
    Value BccFieldValue;
    Value DateFieldValue;

    QString Base; ///< what stands behind "Content-Transfer-Encoding:" in force, blank and line end included
    QString charset;             ///< the charset in force; without quotation marks its line end stays
    QStringList names;           ///< names of attachments in the order found
    bool FilenameValue = false;  ///< the header pane shows them
    bool FilenameValue1 = false; ///< and once more
    Value body;                  ///< from the blank line above the text to the end of the message
    bool bHtmlFileFound = false; ///< the text ends at a boundary; it need not be HTML
};
