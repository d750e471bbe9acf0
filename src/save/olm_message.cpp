#include "save/olm_message.h"

#include "text/base64.h"

#include <QStringList>

#include <algorithm>
#include <cstring>

namespace
{
// A multiple of three, so that the pieces' base64 joins to one text without padding in between.
constexpr size_t pieceBytes = 3 * 64 * 1024;

struct Escape {
    std::string_view escaped;
    char plain;
};
// The longest that fits counts. One pass with these rows gives what undoing the escapes one after the other would,
// "&amp;gt;", "&amp;lt;", "&gt;", "&lt;", "&amp;", "&nbsp;" in this order.
constexpr Escape escapes[] = {
    {"&amp;gt;", '>'}, {"&amp;lt;", '<'}, {"&amp;nbsp;", ' '}, {"&gt;", '>'},
    {"&lt;", '<'},     {"&amp;", '&'},    {"&nbsp;", ' '},
};

std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<size_t>(bytes.size())};
}

const Escape *escapeAt(std::string_view bytes)
{
    for (const Escape &row : escapes)
        if (bytes.substr(0, row.escaped.size()) == row.escaped)
            return &row;
    return nullptr;
}

// In place: what is undone is never longer.
void undoEscapes(QByteArray *body)
{
    char *begin = body->data();
    char *end = begin + body->size();
    char *to = begin;
    for (const char *from = begin; from < end;) {
        const auto left = static_cast<size_t>(end - from);
        const void *found = std::memchr(from, '&', left);
        const size_t run = found ? static_cast<size_t>(static_cast<const char *>(found) - from) : left;
        std::memmove(to, from, run);
        to += run;
        from += run;
        if (!found)
            break;
        const Escape *row = escapeAt({from, left - run});
        *to++ = row ? row->plain : '&';
        from += row ? row->escaped.size() : 1;
    }
    body->truncate(static_cast<int>(to - begin));
}

bool holdsInAnyCase(const QByteArray &text, std::string_view lower)
{
    const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + ('a' - 'A') : a) == b; };
    return std::search(text.begin(), text.end(), lower.begin(), lower.end(), same) != text.end();
}

/// The boundaries of a message and the parameters that name them.
struct Boundaries {
    QByteArray outer;
    QByteArray outerParameter;
    QByteArray inner;
    QByteArray innerParameter;
};

Boundaries boundariesOf(const QByteArray &messageId, int number)
{
    constexpr int numberPlace = 18;
    const QString label = QStringLiteral("boundary=");
    const QString id = QString::fromLatin1(messageId);
    QString quoted = id;
    quoted.replace(QLatin1Char('<'), QLatin1Char('"')).replace(QLatin1Char('>'), QLatin1Char('"'));
    QString bare = id;
    bare.remove(QLatin1Char('<')).remove(QLatin1Char('>'));
    const QString outerParameter = label + quoted;
    QString innerParameter = outerParameter;
    innerParameter.insert(numberPlace, QString::number(number)); // fills up with blanks where it is shorter
    QString inner = innerParameter.mid(label.size());
    inner.remove(QLatin1Char('"'));
    return {bare.toLatin1(), outerParameter.toLatin1(), inner.toLatin1(), innerParameter.toLatin1()};
}

bool hasAttachments(const MailMLRC &record)
{
    for (const QByteArray *list :
         {&record.pAttachContentIds, &record.pAttachContentTypes, &record.pAttachNames, &record.pAttachUrls,
          &record.pAttachOffsets, &record.pAttachSizes})
        if (list->isNull())
            return false;
    return true;
}

QByteArray attachmentHeader(const QByteArray &boundary, const QByteArray &type, const QByteArray &name,
                            const QByteArray &contentId)
{
    QByteArray header = "--" + boundary + "\nContent-type: " + type + "; name=\"" + name +
                        "\"\nContent-Description: " + name +
                        "\nContent-Disposition: attachment; filename=\"" + name +
                        "\";\nContent-Transfer-Encoding: base64";
    if (contentId != "no")
        header += "\nContent-ID: <" + contentId + ">";
    return header + "\n\n";
}
} // namespace

QByteArray olmHtml(QByteArray body)
{
    undoEscapes(&body);
    if (holdsInAnyCase(body, "<html") && holdsInAnyCase(body, "</html>"))
        return body;
    std::replace_if(
        body.begin(), body.end(), [](char byte) { return byte == '\n' || byte == '\r'; }, ' ');
    return body.prepend("<html>").append("</html>");
}

int unreachableAttachments(const MailMLRC &record)
{
    // The header that declares the boundary comes with a body.
    return record.llBodySize <= 0 && hasAttachments(record) ? record.pAttachNames.count(';') : 0;
}

bool OlmComposer::compose(const MailMLRC &record, const OlmMarks &marks, const Write &write)
{
    write(view(olmHeaderBlock(record, marks)));
    const bool wholeBody = record.llBodySize <= 0 || writeBody(record, marks, write);
    const bool wholeAttachments = !hasAttachments(record) || writeAttachments(record, write);
    if (record.llBodySize == 0)
        write("\n\n");
    return wholeBody && wholeAttachments;
}

// True if all of the body was there.
bool OlmComposer::writeBody(const MailMLRC &record, const OlmMarks &marks, const Write &write)
{
    QByteArray body(static_cast<int>(qMin(record.llBodySize, m_archive->size())), Qt::Uninitialized);
    const qint64 taken = m_archive->read(record.llBodyOffset, body.data(), body.size());
    body.truncate(static_cast<int>(qstrnlen(body.constData(), static_cast<uint>(taken))));
    const Boundaries boundaries = boundariesOf(record.szMessageId.bytes(), marks.number);
    write(
        view("Content-type: multipart/mixed;\n\t" + boundaries.outerParameter + "\n\n--" + boundaries.outer +
             "\nContent-type: multipart/alternative;\n\t" + boundaries.innerParameter + "\n\n--" +
             boundaries.inner +
             "\nContent-type: text/html;charset=\"UTF-8\"\nContent-transfer-encoding: quoted-printable\n\n"));
    write(view(olmHtml(std::move(body))));
    write(view("\n\n--" + boundaries.inner + "--\n\n"));
    return taken == record.llBodySize;
}

bool OlmComposer::writeAttachments(const MailMLRC &record, const Write &write)
{
    const QByteArray boundary = boundariesOf(record.szMessageId.bytes(), 0).outer;
    const QList<QByteArray> names = record.pAttachNames.split(';');
    const QList<QByteArray> types = record.pAttachContentTypes.split(';');
    const QList<QByteArray> ids = record.pAttachContentIds.split(';');
    const QList<QByteArray> offsets = record.pAttachOffsets.split(';');
    const QList<QByteArray> sizes = record.pAttachSizes.split(';');
    bool whole = true;
    for (int i = 0; i < names.size() - 1; ++i) {
        write(view(attachmentHeader(boundary, types.value(i), names.at(i), ids.value(i))));
        whole = writeBase64(offsets.value(i).toLongLong(), sizes.value(i).toLongLong(), write) && whole;
        write("\n\n");
    }
    write(view("--" + boundary + "--\n"));
    return whole;
}

// One unbroken line. True if all of the bytes were there.
bool OlmComposer::writeBase64(qint64 offset, qint64 size, const Write &write)
{
    if (size > m_attachmentBytesLeft)
        return false;
    m_attachmentBytesLeft -= qMax<qint64>(0, size);
    const bool inside = offset >= 0 && offset <= m_archive->size();
    m_piece.resize(pieceBytes);
    m_encoded.resize(base64Length(pieceBytes));
    bool whole = size >= 0;
    for (qint64 done = 0; done < size; done += pieceBytes) {
        const auto wanted = static_cast<size_t>(qMin<qint64>(pieceBytes, size - done));
        const qint64 read =
            inside ? m_archive->read(offset + done, m_piece.data(), static_cast<qint64>(wanted)) : 0;
        const auto taken = static_cast<size_t>(read);
        std::fill(m_piece.data() + taken, m_piece.data() + wanted, '\0');
        whole = whole && taken == wanted;
        encodeBase64(m_piece.data(), wanted, m_encoded.data());
        write({m_encoded.data(), base64Length(wanted)});
    }
    return whole;
}
