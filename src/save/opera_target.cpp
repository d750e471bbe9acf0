#include "save/opera_target.h"

#include "save/safe_path.h"
#include "text/line_reader.h"

#include <algorithm>
#include <cstring>

namespace
{
constexpr std::string_view locationHeader = "X-Opera-Location:";
} // namespace

void takeOperaLocation(std::string_view lines, QString *location)
{
    const char *at = lines.data();
    const char *end = at + lines.size();
    std::string_view value;
    while (const void *found =
               ::memmem(at, static_cast<size_t>(end - at), locationHeader.data(), locationHeader.size())) {
        const char *start = static_cast<const char *>(found) + locationHeader.size();
        at = std::find(start, end, '\n');
        value = {start, static_cast<size_t>(at - start)};
    }
    if (!value.data())
        return;
    const QString text = wholeLineText(value).trimmed();
    const int colon = text.lastIndexOf(QLatin1Char(':'));
    *location = colon < 0 ? text : text.left(colon);
    if (location->isNull())
        *location = QStringLiteral("");
}

MailboxTarget operaTarget(const QString &account, const QString &location, const QString &bundle)
{
    const QLatin1Char slash('/');
    const QString folder = location.isNull() ? QStringLiteral("Mails") : location;
    const QString place = harmlessPath((slash + account + slash + folder).trimmed());
    const QString target = bundle + QStringLiteral("/Mail") + place + slash;
    return {target, target + place.mid(place.lastIndexOf(slash) + 1) + QStringLiteral(".mbox")};
}
