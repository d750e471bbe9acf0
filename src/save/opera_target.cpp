#include "save/opera_target.h"

#include "platform/find_files.h"
#include "save/safe_path.h"
#include "text/line_reader.h"

#include <QStringList>

#include <algorithm>
#include <cstring>

namespace
{
constexpr std::string_view locationHeader = "X-Opera-Location:";
const QString nameEntry = QStringLiteral("Account Name=");
constexpr int sectionLines = 101; // lines of a section that are looked at

QString accountKey(const QString &path)
{
    return path.split(QStringLiteral("/store")).last().split(QLatin1Char('/')).value(1).trimmed();
}
} // namespace

QString OperaAccounts::nameFor(const QString &path)
{
    const QString key = accountKey(path);
    if (key.isEmpty())
        return {};
    const auto known = m_nameOfKey.constFind(key);
    if (known != m_nameOfKey.constEnd())
        return *known;
    const QString name = readName(key);
    return *m_nameOfKey.insert(key, name.isEmpty() ? key : name);
}

// What the first "Account Name=" in the first section of the key says.
QString OperaAccounts::readName(const QString &key)
{
    if (m_iniPath.isNull()) {
        const auto found = findFiles(m_store, QStringLiteral("accounts.ini"),
                                     QStringLiteral("/var/tmp/VelmoraKestrinINI"));
        m_iniPath = found && !found->isEmpty() ? found->last() : QStringLiteral("");
    }
    LineReader ini(LineReader::Mode::Text);
    if (!ini.open(m_iniPath))
        return {};
    const QString section = QLatin1Char('[') + key + QLatin1Char(']');
    int left = 0;
    while (const auto bytes = ini.readLine()) {
        const QString line = wholeLineText(*bytes).trimmed();
        if (left == 0) {
            left = line.startsWith(section) ? sectionLines : 0;
            continue;
        }
        if (const int at = line.indexOf(nameEntry); at >= 0)
            return line.mid(at + nameEntry.size()).trimmed();
        if (--left == 0)
            break;
    }
    return {};
}

void takeOperaLocation(std::string_view lines, QString *location)
{
    const char *at = lines.data();
    const char *end = at + lines.size();
    std::string_view value;
    while (const void *found = ::memmem(at, static_cast<size_t>(end - at), locationHeader.data(),
                                        locationHeader.size())) {
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
