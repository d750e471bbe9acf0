#include "save/olm_message.h"
#include "scan/olm_record.h"

#include <cstdlib>

// A message from any bytes keeps within its fields, and can be composed, its positions being as foreign as they are.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    QString names = QStringLiteral("a/b;c;");
    QString offsets = QStringLiteral("0;7;");
    QString sizes = QStringLiteral("5;900;");
    OlmPendingAttachments pending{names, offsets, sizes};
    const QByteArray xml(
        reinterpret_cast<const char *>(data),
        static_cast<int>(qstrnlen(reinterpret_cast<const char *>(data), static_cast<uint>(size))));
    ByteSource archive = ByteSource::ofBytes({reinterpret_cast<const char *>(data), size});
    OlmComposer composer(&archive);
    const QByteArray text = olmText(xml);
    forEachOlmMessage(text, static_cast<qint64>(size), [&](std::string_view message, qint64 start) {
        MailMLRC record;
        readOlmMessage(message, start, &pending, &record);
        if (record.szToAddress.bytes().size() > 2999 || record.szFromName.bytes().size() > 99 ||
            record.llBodySize > text.size())
            std::abort();
        composer.compose(record, {QDateTime::fromSecsSinceEpoch(0), "ID", 7}, [](std::string_view) {});
    });
    return 0;
}
