#include "save/opera_target.h"

#include "save/safe_path.h"
#include "text/byte_search.h"
#include "text/line_reader.h"

#include <algorithm>

namespace
{
constexpr std::string_view locationHeader = "X-Opera-Location:";
} // namespace

void takeOperaLocation(std::string_view lines, QString *location)
{
    std::string_view value;
    for (size_t at = findText(lines, locationHeader); at < lines.size();
         at = findText(lines, locationHeader, at)) {
        const size_t start = at + locationHeader.size();
        at = std::min(lines.find('\n', start), lines.size());
        value = lines.substr(start, at - start);
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
