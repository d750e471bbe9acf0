// Exact copies of hostile bytes: as a message file, a partial message, a mailbox, the XML of an archive. Places that a
// reader gives lie in the source, what is counted as found is counted as written, and where a text is cut into pieces
// does not matter.

#include "save/exact_mailbox.h"
#include "save/exact_message.h"
#include "save/exact_parts.h"
#include "save/mail_separator.h"
#include "save/olm_xml.h"
#include "save/olm_xml_text.h"

#include <cstdint>
#include <cstdlib>

namespace
{
void copyMessage(std::string_view bytes, const char *path)
{
    MailboxFile none(SaveMode::CountOnly);
    none.open(QStringLiteral("/none"), {});
    ByteSource source = ByteSource::ofBytes(bytes, QString::fromLatin1(path));
    const ExactMessageCopy copy = copyMessageExactly(&source, &none, [] { return true; });
    if (copy.end != ExactEnd::Whole || !source.errorString().isEmpty())
        std::abort();
}

void copyMailbox(std::string_view bytes)
{
    ByteSource source = ByteSource::ofBytes(bytes);
    if (probeMailbox(&source).found == 0)
        return;
    MailboxFile none(SaveMode::CountOnly);
    none.open(QStringLiteral("/none"), {});
    const ExactMailboxCopy copy = copyMailboxExactly(&source, &none, [](qint64) { return true; });
    const auto size = static_cast<qint64>(bytes.size());
    if (copy.end != ExactEnd::Whole || copy.found != copy.written || none.size() > size + 1)
        std::abort();
}

void readArchive(std::string_view bytes)
{
    ByteSource source = ByteSource::ofBytes(bytes);
    const auto goOn = [] { return true; };
    const OlmMail mail = readOlmMail(&source, 0, source.size(), goOn);
    QByteArray body;
    readOlmBody(&source, 0, source.size(), goOn, [&body](std::string_view piece) {
        body.append(piece.data(), static_cast<int>(piece.size()));
    });
    if (body.size() != mail.bodyBytes || !body.startsWith(mail.body))
        std::abort();
}

void cutText(const QByteArray &text)
{
    for (const OlmXmlText::Form form : {OlmXmlText::Form::Xml, OlmXmlText::Form::Plain}) {
        OlmXmlText whole(form);
        OlmXmlText cut(form);
        const int middle = text.size() / 2;
        if (cut.take(text.left(middle), false) + cut.take(text.mid(middle), true) != whole.take(text, true))
            std::abort();
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    for (const char *path : {"/none/1.eml", "/none/1.emlx", "/none/1.partial.emlx"})
        copyMessage(bytes, path);
    copyMailbox(bytes);
    ByteSource source = ByteSource::ofBytes(bytes);
    for (const TakenOutPart &part : takenOutParts(&source, 0, source.size()))
        if (part.headerStart >= part.headerEnd || part.headerEnd > source.size() ||
            part.contentPlace > source.size())
            std::abort();
    const QByteArray text(bytes.data(), static_cast<int>(bytes.size()));
    readArchive(bytes);
    cutText(text);
    firstAddress(text);
    mailDate(text);
    return 0;
}
