#pragma once

#include "text/latin1_line.h"

#include <QtGlobal>

#include <string_view>
#include <vector>

/// What happens to the lines of a message file on the way into a mailbox, besides what happens to all of them.
enum class LineRule {
    /// Nothing.
    Stay,
    /// A line that starts with "From " gets a ">" before it. A line with the declaration of a property list,
    /// `<?xml version="1.0" encoding="UTF-8"?>`, ends the message and goes. The header "Received-Spf: ..." goes with its
    /// folded lines; the line behind them is copied as it stands, even one that starts with "From ".
    Filtered,
    /// A ">" goes before each "From : ", wherever it stands.
    FromColonQuoted
};

/// What of a message's text is not as it was, and what its lines look like to a reader of the mailbox.
struct TextChanges {
    Latin1Counts latin1;
    qint64 quoted = 0;          ///< lines that got ">"
    qint64 droppedHeaders = 0;  ///< "Received-Spf:"
    qint64 fromLines = 0;       ///< lines that start with "From "
    bool lostFirstLine = false; ///< the line left out was mail: not blank, no number, no start with "From "
    qint64 endedAt = -1; ///< where the line stands that ended the message, bytes from its start; else -1
};

/// Turns the bytes of one message file after another into the text that a mailbox gets: Latin-1, each line read as
/// UTF-8 in text mode as the toolkit does it (CR LF becomes LF, a byte order mark at the start of a line goes, what
/// Latin-1 lacks becomes "?"), without the first line that the rule leaves. Memory is bounded by what is taken at
/// once.
class MessageText
{
public:
    /// One rule for all messages.
    explicit MessageText(LineRule rule) : m_rule(rule) {}

    /// A new message begins.
    void start();
    /// The next lines of the file; only its last one may lack its line feed. Gives what they become, valid until the
    /// next call.
    std::string_view take(std::string_view lines);
    /// True if no further line matters.
    bool hasEnded() const { return m_ended; }
    /// What has become of the message so far.
    const TextChanges &changes() const { return m_changes; }

private:
    size_t takeLine(std::string_view lines);
    size_t keepUnseen(std::string_view line);
    size_t copyLines(std::string_view lines, bool seen);
    size_t copyHighByte(std::string_view text);
    void dropFirst(std::string_view line);
    void endMessage(const char *line);
    void takeBackLine(std::string_view copied);
    std::string_view quoted();

    void put(char byte) { m_out[m_outSize++] = byte; }

    LineRule m_rule;
    bool m_firstToDrop = true; ///< the first line that the rule leaves is still to come
    bool m_dropsFolds = false; ///< within a "Received-Spf:" header
    bool m_ended = false;
    std::vector<char> m_out;
    size_t m_outSize = 0;
    std::vector<char> m_quoted;
    TextChanges m_changes;
    qint64 m_taken = 0;            ///< bytes taken before these
    const char *m_lines = nullptr; ///< where these begin
};

/// Where the contents of a partial message's parts belong in its text: for each section that starts with
/// "X-Apple-Content-Length: ", in their order, the position behind its first empty line, or -1 where it has none.
std::vector<qint64> partPlaces(std::string_view text);

/// How many sections a text has whose content stands elsewhere: those of partPlaces.
qint64 partSections(std::string_view text);

/// Appends lines of a part file as they go into a message: CR LF becomes LF, and a line ends at its first zero byte,
/// which takes its line feed along.
void appendPartLines(std::string_view lines, std::vector<char> *out);
