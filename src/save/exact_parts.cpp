#include "save/exact_parts.h"

#include "text/read_buffer.h"

#include <QList>

#include <algorithm>

namespace
{
constexpr size_t longestLine = 4 * 1024; // more of a line is never looked at
constexpr int longestHeader = 64 * 1024; // nor of a folded header
constexpr size_t deepestNesting = 100;

/// A line: its first bytes without the line end, and where it and the next one start.
struct Line {
    QByteArray text;
    qint64 start = 0;
    qint64 next = 0;
};

/// An entity whose parts are being read.
struct Multipart {
    QByteArray delimiter; ///< "--" and the boundary
    QByteArray section;   ///< what stands before the numbers of its parts, "" at the top
    int parts = 0;
    bool isDigest = false;
};

/// What the headers of an entity say.
struct Headers {
    QByteArray type;
    QByteArray encoding;
    qint64 appleStart = -1;
    qint64 appleEnd = -1;
};

// A parameter of a header's value: "multipart/mixed; boundary=\"b\"".
QByteArray parameter(const QByteArray &value, const QByteArray &name)
{
    for (int at = value.indexOf(';'); at >= 0;) {
        int equals = value.indexOf('=', at);
        if (equals < 0)
            break;
        const bool named = value.mid(at + 1, equals - at - 1).trimmed().toLower() == name;
        while (++equals < value.size() && (value.at(equals) == ' ' || value.at(equals) == '\t')) {
        }
        const bool quoted = equals < value.size() && value.at(equals) == '"';
        QByteArray text;
        int end = equals + (quoted ? 1 : 0);
        for (; end < value.size() && value.at(end) != (quoted ? '"' : ';'); ++end) {
            if (quoted && value.at(end) == '\\' && end + 1 < value.size())
                ++end;
            text += value.at(end);
        }
        if (named)
            return quoted ? text : text.trimmed();
        at = value.indexOf(';', end);
    }
    return {};
}

class PartFinder
{
public:
    PartFinder(ByteSource *source, qint64 start, qint64 end) : m_buffer(source), m_position(start), m_end(end)
    {
    }

    std::vector<TakenOutPart> find()
    {
        m_inHeaders = true;
        while (m_position < m_end) {
            const Line line = readLine();
            if (line.next == line.start)
                break; // a failed read
            if (!takeDelimiter(line) && m_inHeaders)
                takeHeaderLine(line);
        }
        if (m_inHeaders)
            endHeaders(-1);
        return m_parts;
    }

private:
    Line readLine()
    {
        Line line;
        line.start = m_position;
        for (qint64 at = m_position; at < m_end;) {
            std::string_view bytes = m_buffer.from(at);
            bytes = bytes.substr(0, static_cast<size_t>(std::min<qint64>(m_end - at, qint64(bytes.size()))));
            const size_t feed = bytes.find('\n');
            const std::string_view piece = bytes.substr(0, feed);
            const size_t room = longestLine - std::min(longestLine, static_cast<size_t>(line.text.size()));
            line.text.append(piece.data(), static_cast<int>(std::min(piece.size(), room)));
            at += static_cast<qint64>(piece.size());
            m_position = at;
            if (feed != std::string_view::npos) {
                ++m_position;
                break;
            }
            if (bytes.empty())
                break;
        }
        line.next = m_position;
        if (line.text.endsWith('\r'))
            line.text.chop(1);
        return line;
    }

    // A line between two parts, or behind the last one. It also ends the headers of a part, and all that is nested in it.
    bool takeDelimiter(const Line &line)
    {
        if (!line.text.startsWith("--"))
            return false;
        for (size_t i = m_open.size(); i-- > 0;) {
            const Multipart &multipart = m_open[i];
            if (!line.text.startsWith(multipart.delimiter))
                continue;
            QByteArray rest = line.text.mid(multipart.delimiter.size());
            const bool closes = rest.startsWith("--");
            rest = closes ? rest.mid(2) : rest;
            if (!rest.trimmed().isEmpty())
                continue;
            if (m_inHeaders)
                endHeaders(-1);
            m_open.resize(i + (closes ? 0 : 1));
            m_inHeaders = !closes;
            if (!closes)
                startPart();
            return true;
        }
        return false;
    }

    void startPart()
    {
        Multipart &multipart = m_open.back();
        const QByteArray number = QByteArray::number(++multipart.parts);
        m_section = multipart.section.isEmpty() ? number : multipart.section + '.' + number;
        m_headers = Headers();
        m_headers.type = multipart.isDigest ? "message/rfc822" : "text/plain";
        m_isMessage = false;
        m_header.clear();
    }

    void takeHeaderLine(const Line &line)
    {
        if (line.text.isEmpty()) {
            endHeaders(line.next);
            return;
        }
        if (line.text.startsWith(' ') || line.text.startsWith('\t')) {
            if (m_header.size() < longestHeader)
                m_header += line.text;
            if (m_headers.appleStart >= 0 && m_headers.appleEnd == line.start)
                m_headers.appleEnd = line.next;
            return;
        }
        endHeader();
        m_header = line.text;
        if (line.text.left(23).compare("X-Apple-Content-Length:", Qt::CaseInsensitive) == 0) {
            m_headers.appleStart = line.start;
            m_headers.appleEnd = line.next;
        }
    }

    void endHeader()
    {
        const int colon = m_header.indexOf(':');
        const QByteArray name = m_header.left(qMax(0, colon)).trimmed().toLower();
        if (name == "content-type")
            m_headers.type = m_header.mid(colon + 1).trimmed();
        else if (name == "content-transfer-encoding")
            m_headers.encoding = m_header.mid(colon + 1).trimmed().toLower();
        m_header.clear();
    }

    // The headers of an entity have ended before `content`, -1 where no empty line ends them. Parts of a multipart that
    // is a message itself are numbered below the message; anything else in a message is its part 1.
    void endHeaders(qint64 content)
    {
        endHeader();
        m_inHeaders = false;
        const QByteArray type = m_headers.type.toLower();
        const bool multipart = type.startsWith("multipart/");
        if (m_headers.appleStart >= 0)
            m_parts.push_back({m_isMessage && !multipart ? numbered(1) : m_section, m_headers.encoding,
                               m_headers.appleStart, m_headers.appleEnd, content});
        const QByteArray boundary = multipart ? parameter(m_headers.type, "boundary") : QByteArray();
        if (m_open.size() >= deepestNesting || content < 0)
            return;
        if (!boundary.isEmpty()) {
            m_open.push_back({"--" + boundary, m_section, 0, type.startsWith("multipart/digest")});
        } else if (type.startsWith("message/rfc822") && m_headers.appleStart < 0) {
            m_section = m_isMessage ? numbered(1) : m_section;
            m_isMessage = true;
            m_headers = Headers();
            m_headers.type = "text/plain";
            m_inHeaders = true;
        }
    }

    QByteArray numbered(int part) const
    {
        return (m_section.isEmpty() ? QByteArray() : m_section + '.') + QByteArray::number(part);
    }

    ReadBuffer m_buffer;
    qint64 m_position;
    qint64 m_end;
    std::vector<Multipart> m_open; ///< from the outermost on
    bool m_inHeaders = false;
    bool m_isMessage = true; ///< the headers are those of a message, the outermost one or one in a part
    QByteArray m_section;    ///< of the part, or of the message, whose headers are read
    QByteArray m_header;     ///< the header in work, folds joined
    Headers m_headers;
    std::vector<TakenOutPart> m_parts;
};
} // namespace

std::vector<TakenOutPart> takenOutParts(ByteSource *source, qint64 start, qint64 end)
{
    return PartFinder(source, start, end).find();
}
