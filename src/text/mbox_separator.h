#pragma once

#include "platform/byte_source.h"

#include <string>
#include <string_view>

/// True for a line that starts with "From ", as the first line of a mailbox does (mbox, RFC 4155). A byte order mark at
/// its front does not count.
bool startsAsSeparator(std::string_view line);
/// True for a line that begins a message of a mailbox behind the first one: it starts with "From " and holds the name of
/// a weekday between blanks, before any zero byte.
bool isMboxSeparator(std::string_view line);
/// The same for a line of which only the start is known; it goes on at `next` in the source, in bytes, and is read in
/// pieces up to its end or to the weekday. What can't be read of it does not count.
bool isMboxSeparator(std::string_view lineStart, ByteSource *source, qint64 next);

/// A line that starts with "From ", taken in pieces because it may be of any length.
class SeparatorLine
{
public:
    /// The next bytes of the line.
    void take(std::string_view piece);
    /// True as soon as the line holds the weekday.
    bool isSeparator() const { return m_hasWeekday; }
    /// True behind a line feed or a zero byte: what follows does not count.
    bool hasEnded() const { return m_ended; }
    /// The length as text so far, a line feed included. Right where no piece ends within a character.
    qint64 utf16Units() const { return m_units; }

private:
    std::string m_seam; ///< the last bytes of the piece before: the weekday may lie across two
    bool m_hasWeekday = false;
    bool m_ended = false;
    qint64 m_units = 0;
};
