#pragma once

#include <QtGlobal>

#include <string_view>

/// Counts the lines that start with "From " in text that comes in pieces: where a reader of a mailbox (mbox, RFC 4155)
/// may see a message begin.
class FromLines
{
public:
    /// The next piece; a line may go on from the one before.
    void take(std::string_view text);
    qint64 count() const { return m_count; }

private:
    size_t m_matched = 0; ///< bytes of "From " that the line begins with; 5: this line is done with
    qint64 m_count = 0;
};
