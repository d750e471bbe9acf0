#pragma once

#include "browse/mime_walk.h"

/// Where the text ends in a body, bytes: before the first line that starts a part of another kind, or behind the
/// start of a property list; the body's size if no such line stands in it.
size_t endOfText(std::string_view body, const PreviewDialect &dialect);

/// The text of a message as it is given to the web view, plain text too: cut at its end, freed of the transfer
/// encoding (RFC 2045, 6) and read in its charset. "" without a body. Never fails; what can't be decoded comes
/// out as it can.
QString bodyText(const WalkedMessage &message, const PreviewDialect &dialect);
