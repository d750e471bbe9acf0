// An exact copy of a partial message against a plain model of what it becomes with its parts. The input is the message
// and, behind each line "%%", the content of a part.

#include "app/problem_log.h"
#include "save/emlx_span.h"
#include "save/exact_message.h"
#include "save/exact_parts.h"
#include "scratch_folder.h"
#include "text/transfer_encoding.h"

#include <QDir>
#include <QMap>

#include <cstdint>
#include <cstdlib>

namespace
{
// Where the content of a section lies: beside the message as it stands, or among the attachments to be encoded.
struct Content {
    const char *file;
    bool isEncoded;
    QByteArray bytes;
};

QMap<QByteArray, Content> contentsOf(const QList<QByteArray> &pieces)
{
    return {{"1", {"M/1.1.emlxpart", false, pieces.value(1)}},
            {"2", {"Attachments/1/2/a", true, pieces.value(2)}},
            {"2.1", {"Attachments/1/2.1/b", true, pieces.value(3)}},
            {"3", {"M/1.3.emlxpart", false, pieces.value(2)}}};
}

std::string_view view(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<size_t>(bytes.size())};
}

QByteArray encoded(const Content &content, const QByteArray &encoding)
{
    const TransferEncoder::Form form =
        content.isEncoded ? encodingForm(encoding) : TransferEncoder::Form::AsItIs;
    if (form == TransferEncoder::Form::AsItIs)
        return content.bytes;
    QByteArray out;
    if (form == TransferEncoder::Form::Base64) {
        const QByteArray all = content.bytes.toBase64();
        for (int at = 0; at < all.size(); at += 76)
            out += (at > 0 ? "\n" : "") + all.mid(at, 76);
        return out;
    }
    TransferEncoder encoder(
        form, [&](std::string_view text) { out.append(text.data(), static_cast<int>(text.size())); });
    encoder.take(view(content.bytes));
    encoder.end();
    return out;
}

QByteArray quoted(const QByteArray &text)
{
    QByteArray out;
    for (int at = 0, end = 0; at < text.size(); at = end) {
        end = text.indexOf('\n', at) + 1;
        int behind = at;
        while (text.at(behind) == '>')
            ++behind;
        out += (text.mid(behind, 5) == "From " ? ">" : "") + text.mid(at, end - at);
    }
    return out;
}

QByteArray expected(const QByteArray &message, ByteSource *source, const QMap<QByteArray, Content> &contents)
{
    const EmlxSpan span = emlxSpan(source);
    const auto bytes = [&](qint64 start, qint64 end) {
        return message.mid(static_cast<int>(start), static_cast<int>(end - start));
    };
    QByteArray out;
    qint64 copied = span.start;
    for (const TakenOutPart &part : takenOutParts(source, span.start, span.end)) {
        if (part.contentPlace < 0 || !contents.contains(part.section))
            continue;
        out += bytes(copied, part.headerStart) + bytes(part.headerEnd, part.contentPlace) +
               encoded(contents[part.section], part.encoding);
        copied = part.contentPlace;
    }
    out += bytes(copied, span.end);
    out.replace("\r\n", "\n");
    return quoted(out.endsWith('\n') ? out : out + '\n') + '\n';
}

ScratchFolder &folder()
{
    static ScratchFolder made;
    return made;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool made = QDir().mkpath(folder().path("M")) &&
                             QDir().mkpath(folder().path("Attachments/1/2")) &&
                             QDir().mkpath(folder().path("Attachments/1/2.1"));
    QList<QByteArray> pieces;
    QByteArray rest(reinterpret_cast<const char *>(data), static_cast<int>(size));
    for (int at = rest.indexOf("%%\n"); at >= 0 && pieces.size() < 3; at = rest.indexOf("%%\n")) {
        pieces += rest.left(at);
        rest = rest.mid(at + 3);
    }
    pieces += rest;
    const QByteArray message = pieces.first();
    const QMap<QByteArray, Content> contents = contentsOf(pieces);
    for (const Content &content : contents)
        folder().write(QLatin1String(content.file), view(content.bytes));
    ByteSource source = ByteSource::ofBytes(view(message), folder().path("M/1.partial.emlx"));
    static MailboxFile target; // with its buffer
    target.open(folder().path("target"), outlookMailbox);
    target.truncate(0);
    const ExactMessageCopy copy = copyMessageExactly(&source, &target, [] { return true; });
    target.close();
    const QByteArray written = folder().read("target");
    if (!made || copy.end != ExactEnd::Whole || !written.startsWith("From ") || !takeProblems().isEmpty() ||
        written.mid(written.indexOf('\n') + 1) != expected(message, &source, contents))
        std::abort();
    return 0;
}
