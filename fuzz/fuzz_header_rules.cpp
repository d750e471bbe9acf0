#include "text/date_rules.h"
#include "text/header_rules.h"

#include <QStringList>

#include <cstddef>
#include <cstdint>

// The lines of a header, the first and its folds, through every rule and every user's row.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QStringList lines;
    for (int from = 0; from < text.size();) {
        const int feed = text.indexOf(QLatin1Char('\n'), from);
        lines.append(text.mid(from, feed < 0 ? -1 : feed + 1 - from));
        from += lines.last().size();
    }
    const QString first = lines.isEmpty() ? QString() : lines.takeFirst();
    for (const HeaderDialect *dialect :
         {&singleFileHeaders, &mailboxHeaders, &listHeaders, &mailboxIndexHeaders, &operaIndexHeaders}) {
        decodeSender(first, lines, *dialect);
        decodeSubject(first, lines, *dialect);
    }
    decodeSender(text, {}, singleFileHeaders);
    decodeSender(text, {}, mailboxHeaders);
    decodeRecipients(text, QStringLiteral("To: "));
    displayDate(text, ZoneNames::CommonAndIndia);
    return 0;
}
