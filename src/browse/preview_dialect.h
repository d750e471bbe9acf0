#pragma once

#include "browse/walked_message.h"
#include "text/date_rules.h"

#include <vector>

struct HeaderDialect;

/// Where a header is looked for. `name` is the line feed before it, its name and the colon.
struct FieldPattern {
    std::string_view name;
    WalkedMessage::Value WalkedMessage::*value;
    bool inSection; ///< also between the start of a text section and its blank line
};

enum class Section { Html, Plain };
/// The start of a text section.
struct SectionPattern {
    std::string_view text;
    Section section;
    bool beforeHtmlOnly = false; ///< not once an HTML section has been found
};

/// What differs between the two previews: a message that fills a file, and a message in a mailbox.
struct PreviewDialect {
    enum class Encoding { UntilPlainText, BeforeText };
    enum class Names { InHeader, QuotedOrNot };

    // ---- the walk over the message ----
    std::vector<FieldPattern> fields;
    std::vector<SectionPattern> sections;
    bool endsAtText;      ///< an HTML text, a second plain one and an application part end it, but for names
    bool charsetAnywhere; ///< a charset counts outside the texts as well
    /// Which Content-Transfer-Encoding outside the texts counts: each until a plain text has its own (UntilPlainText), or
    /// those before the first text (BeforeText).
    Encoding outerEncoding;
    bool capitalsCount;      ///< the first "Content-Transfer-Encoding: QUOTED-PRINTABLE" counts in any case
    bool keepsFirstEncoding; ///< a later HTML text does not change the message's encoding
    std::string_view htmlEncoding;  ///< second spelling of the encoding's header in an HTML text, "" if none
    std::string_view plainEncoding; ///< likewise in a plain one
    Names names; ///< an attachment's name is quoted anywhere in the header; or directly, else up to a "="
    // ---- the header pane ----
    const HeaderDialect &headers;
    ZoneNames zones;
    QString nameSeparator;
    // ---- the end of the text ----
    bool endsAtMessage;                 ///< a part that is a message ends the text
    bool endsAtPropertyList;            ///< the text ends behind the first line of an XML property list
    std::vector<std::string_view> cuts; ///< an HTML text is cut at the last of these
    bool cutsBase64Again; ///< base64 in HTML is cut at a boundary of its own, and "UTF-8" is known too
    // ---- decoding ----
    std::vector<QString> base64;          ///< spellings of the encoding
    std::vector<QString> quotedPrintable; ///< likewise
};

extern const PreviewDialect filePreview;
extern const PreviewDialect mailboxPreview;
