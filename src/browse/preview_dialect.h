#pragma once

#include "text/date_rules.h"

#include <QString>

#include <string_view>
#include <vector>

struct HeaderDialect;

/// The headers that a preview shows. "Cc:" and "CC:" are told apart.
enum class Field { From, To, Subject, Cc, CC, Bcc, Date };
constexpr int fieldCount = 7;

/// Where a header is looked for. `name` is the line feed before it, its name and the colon.
struct FieldPattern {
    std::string_view name;
    Field field;
    bool inSection; ///< also between the start of a text section and its blank line
};

enum class Section { Html, Plain };
/// The start of a text section.
struct SectionPattern {
    std::string_view text;
    Section section;
    bool beforeHtmlOnly = false; ///< not once an HTML section has been found
};

/// What differs between the two previews: a message that fills a file, and a message in a mailbox. Each member
/// exists because the rows differ in it.
struct PreviewDialect {
    // ---- the walk over the message ----
    std::vector<FieldPattern> fields;
    std::vector<SectionPattern> sections;
    bool ownsFile; ///< an HTML section, a second plain one or an application part ends the walk, names of
        ///< attachments are then looked for in the rest; outside sections a charset is taken, and an
        ///< encoding until a plain section has one. Otherwise the last text section counts, and an
        ///< encoding is taken outside only before the first section
    std::string_view
        htmlEncoding; ///< second spelling of the encoding's header in an HTML section, "" if none
    std::string_view plainEncoding; ///< likewise in a plain section
    bool firstHtmlEncoding;         ///< HTML sections take the message's first encoding only
    // ---- the header pane ----
    const HeaderDialect &headers;
    ZoneNames zones;
    QString nameSeparator;
    // ---- the end of the text ----
    bool endsAtMessage;                 ///< a part that is a message ends the text
    bool endsAtPropertyList;            ///< the text ends behind the first line of an XML property list
    std::vector<std::string_view> cuts; ///< an HTML text is cut at the last of these
    bool cutsBase64Again;               ///< base64 in HTML is cut at a boundary of its own
    // ---- decoding ----
    std::vector<QString> base64;          ///< spellings of the encoding
    std::vector<QString> quotedPrintable; ///< likewise
    bool cleansHtmlCharset; ///< base64 in HTML: the charset's newline goes, "UTF-8" is known too
};

extern const PreviewDialect filePreview;
extern const PreviewDialect mailboxPreview;
