#include "text/message_text.h"

#include "text/byte_search.h"
#include "text/latin1_line.h"
#include "text/line_bytes.h"

#include <algorithm>

namespace
{
constexpr std::string_view declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
constexpr std::string_view receivedSpf = "Received-Spf:";
constexpr std::string_view separatorStart = "From ";
constexpr std::string_view quotedText = "From : ";
constexpr std::string_view partMark = "X-Apple-Content-Length: ";

std::string_view firstLine(std::string_view lines)
{
    return lines.substr(0, std::min(lines.find('\n'), lines.size() - 1) + 1);
}

// Whether something is lost with a message's first line: it is neither blank, nor a byte count, nor a separator.
bool isMail(std::string_view line)
{
    constexpr std::string_view blanks = " \t\r\n";
    const size_t start = line.find_first_not_of(blanks);
    if (start == std::string_view::npos || startsWith(line, separatorStart))
        return false;
    const std::string_view word = line.substr(start, line.find_last_not_of(blanks) + 1 - start);
    return word.find_first_not_of("0123456789") != std::string_view::npos;
}
} // namespace

void MessageText::start()
{
    m_firstToDrop = true;
    m_dropsFolds = false;
    m_ended = false;
    m_changes = {};
    m_taken = 0;
}

std::string_view MessageText::take(std::string_view lines)
{
    // A line that gets a ">" has at least five bytes; the copy stores 16 bytes at a time, so needs 16 behind its end.
    const size_t room = lines.size() + lines.size() / separatorStart.size() + 64;
    if (m_out.size() < room)
        m_out.resize(room);
    m_outSize = 0;
    m_lines = lines.data();
    const auto bytes = static_cast<qint64>(lines.size());
    while (!lines.empty() && !m_ended)
        lines.remove_prefix(takeLine(lines));
    m_taken += bytes;
    return m_rule == LineRule::FromColonQuoted ? quoted() : std::string_view(m_out.data(), m_outSize);
}

// Decides on the line at the front and copies it, where it is kept, with those behind it that need no decision.
// Gives the bytes dealt with.
size_t MessageText::takeLine(std::string_view lines)
{
    const std::string_view text = withoutMark(lines);
    const bool filtered = m_rule == LineRule::Filtered;
    if (m_dropsFolds) {
        if (startsWith(text, " "))
            return firstLine(lines).size();
        m_dropsFolds = false;
        return keepUnseen(firstLine(lines));
    }
    const bool startsSpf = filtered && startsWith(text, receivedSpf);
    if (startsSpf || m_firstToDrop) {
        const std::string_view line = firstLine(lines);
        if (filtered && findText(line, declaration) != std::string_view::npos)
            endMessage(line.data());
        else if (startsSpf)
            m_dropsFolds = true;
        else if (!filtered || !text.empty())
            dropFirst(firstLine(text));
        m_changes.droppedHeaders += m_dropsFolds ? 1 : 0;
        return line.size();
    }
    if (startsWith(text, separatorStart)) {
        if (filtered)
            put('>');
        if (m_rule != LineRule::FromColonQuoted || !startsWith(text, quotedText))
            ++(filtered ? m_changes.quoted : m_changes.fromLines);
    }
    return lines.size() - text.size() + copyLines(text, filtered);
}

// The line behind a dropped Received-Spf header, copied as it stands; where no first line has gone yet, it goes.
size_t MessageText::keepUnseen(std::string_view line)
{
    const std::string_view text = withoutMark(line);
    if (m_firstToDrop) {
        dropFirst(text);
    } else {
        m_changes.fromLines += startsWith(text, separatorStart) ? 1 : 0;
        copyLines(text, false);
    }
    return line.size();
}

void MessageText::dropFirst(std::string_view line)
{
    m_firstToDrop = false;
    m_changes.lostFirstLine = isMail(line);
}

// Copies up to the next line that needs a decision; `seen`: the rule Filtered looks at the lines, so that an XML
// declaration ends the message. Gives the bytes dealt with.
size_t MessageText::copyLines(std::string_view lines, bool seen)
{
    const char *begin = lines.data();
    const char *end = begin + lines.size();
    size_t at = 0;
    while (at < lines.size()) {
        char *out = m_out.data() + m_outSize;
        const CopiedText copied =
            seen ? copyFilteredText(begin + at, end, out) : copyPlainText(begin + at, end, out);
        m_changes.latin1.single += static_cast<qint64>(copied.high);
        m_outSize += static_cast<size_t>(copied.out - out);
        at = static_cast<size_t>(copied.in - begin);
        if (at == lines.size() || (at > 0 && lines[at - 1] == '\n'))
            break;
        const std::string_view rest = lines.substr(at);
        if (rest[0] < 0) {
            at += copyHighByte(rest);
            continue;
        }
        if (rest[0] == '<' && startsWith(rest, declaration)) {
            takeBackLine(lines.substr(0, at));
            break;
        }
        put(rest[0]);
        ++at;
    }
    return at;
}

// Copies the character at the front. Malformed UTF-8: the text up to the next '<' or line end goes through QString, which
// defines how many '?' come out.
size_t MessageText::copyHighByte(std::string_view text)
{
    const Latin1Character character = latin1Character(text);
    if (character.taken > 0) {
        std::copy_n(character.bytes, character.given, m_out.data() + m_outSize);
        m_outSize += character.given;
        m_changes.latin1 += character.counts;
        return character.taken;
    }
    std::string_view rest = text.substr(0, text.find_first_of("\n<"));
    if (rest.back() == '\r' && startsWith(text.substr(rest.size()), "\n"))
        rest.remove_suffix(1);
    QByteArray latin1;
    m_changes.latin1 += appendAsLatin1(rest, false, &latin1);
    std::copy(latin1.cbegin(), latin1.cend(), m_out.data() + m_outSize);
    m_outSize += static_cast<size_t>(latin1.size());
    return rest.size();
}

void MessageText::endMessage(const char *line)
{
    m_ended = true;
    m_changes.endedAt = m_taken + (line - m_lines);
}

// Ends the message at the start of the last line of `copied`, of which this much has been copied already.
void MessageText::takeBackLine(std::string_view copied)
{
    const std::string_view line = copied.substr(copied.rfind('\n') + 1); // none: npos + 1 is 0
    while (m_outSize > 0 && m_out[m_outSize - 1] != '\n')
        --m_outSize;
    QByteArray latin1;
    const Latin1Counts counts = appendAsLatin1(line, false, &latin1);
    m_changes.latin1.lost -= counts.lost;
    m_changes.latin1.single -= counts.single;
    m_changes.quoted -= startsWith(line, separatorStart) ? 1 : 0;
    endMessage(line.data());
}

std::string_view MessageText::quoted()
{
    const std::string_view text(m_out.data(), m_outSize);
    size_t found = findText(text, quotedText, 0);
    if (found == std::string_view::npos)
        return text;
    m_quoted.clear();
    size_t copied = 0;
    size_t lineEnd = 0; // of the line quoted last
    for (; found != std::string_view::npos; found = findText(text, quotedText, found + quotedText.size())) {
        m_quoted.insert(m_quoted.end(), text.data() + copied, text.data() + found);
        m_quoted.push_back('>');
        copied = found;
        if (found >= lineEnd) {
            ++m_changes.quoted;
            lineEnd = std::min(text.find('\n', found), text.size());
        }
    }
    m_quoted.insert(m_quoted.end(), text.data() + copied, text.data() + text.size());
    return {m_quoted.data(), m_quoted.size()};
}

std::vector<qint64> partPlaces(std::string_view text)
{
    constexpr std::string_view emptyLine = "\n\n";
    std::vector<qint64> places;
    size_t section = findText(text, partMark, 0);
    while (section != std::string_view::npos) {
        const size_t next = findText(text, partMark, section + partMark.size());
        const size_t place = findText(text.substr(0, next), emptyLine, section);
        places.push_back(place == std::string_view::npos ? -1
                                                         : static_cast<qint64>(place + emptyLine.size()));
        section = next;
    }
    return places;
}

qint64 partSections(std::string_view text)
{
    qint64 sections = 0;
    for (size_t at = findText(text, partMark); at < text.size(); at = findText(text, partMark, at + 1))
        ++sections;
    return sections;
}

void appendPartLines(std::string_view lines, std::vector<char> *out)
{
    while (!lines.empty()) {
        const std::string_view line = firstLine(lines);
        lines.remove_prefix(line.size());
        std::string_view kept = line;
        if (kept.size() > 1 && kept.substr(kept.size() - 2) == "\r\n")
            kept.remove_suffix(2);
        const bool shortened = kept.size() < line.size();
        const size_t zero = kept.find('\0');
        out->insert(out->end(), kept.begin(),
                    kept.begin() + static_cast<ptrdiff_t>(std::min(zero, kept.size())));
        if (shortened && zero == std::string_view::npos)
            out->push_back('\n');
    }
}
