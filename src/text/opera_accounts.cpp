#include "text/opera_accounts.h"

#include "platform/byte_source.h"

#include <QTextStream>

/// What differs between the users. Each member exists because the two rows differ in it.
struct OperaAccountRule {
    enum class Take { FirstPiece, TextBehind };
    enum class Sections { All, First };

    Qt::CaseSensitivity key; ///< how "[key]" is compared
    Sections sections;       ///< all: a later section of the same key overrules
    Take take;               ///< what of a line around "Account Name=" is the name
    bool carriesOver;        ///< a key without a name has that of the file before
    bool skipsEmptyKey;      ///< an empty key leaves the name as it was
};

// clang-format off
//                                  key                  sections                          take                                carriesOver skipsEmptyKey
const OperaAccountRule scanAccounts{Qt::CaseInsensitive, OperaAccountRule::Sections::All,   OperaAccountRule::Take::FirstPiece, true,       true };
const OperaAccountRule saveAccounts{Qt::CaseSensitive,   OperaAccountRule::Sections::First, OperaAccountRule::Take::TextBehind, false,      false};
// clang-format on

namespace
{
constexpr int sectionLines = 101;
constexpr qint64 longestIni = qint64{1} << 20;
const QString nameMark = QStringLiteral("Account Name=");

// The name in a line, if it has one: an empty name is passed over by one user, and ends the search of the other.
std::optional<QString> nameInLine(const QString &line, OperaAccountRule::Take take)
{
    const int mark = line.indexOf(nameMark);
    if (mark < 0)
        return std::nullopt;
    const QString behind = line.mid(mark + nameMark.size());
    if (take == OperaAccountRule::Take::TextBehind)
        return behind.trimmed();
    const QStringList pieces = line.split(nameMark, Qt::SkipEmptyParts);
    if (behind.isEmpty() || pieces.isEmpty())
        return std::nullopt;
    return pieces.first().trimmed();
}
} // namespace

QString operaAccountOf(const QString &path)
{
    return path.section(QStringLiteral("/store"), -1).section(QLatin1Char('/'), 1, 1).trimmed();
}

OperaAccounts::OperaAccounts(const QString &iniPath, const OperaAccountRule &rule) : m_rule(rule)
{
    if (iniPath.isEmpty())
        return;
    ByteSource file = ByteSource::ofFile(iniPath);
    QByteArray bytes(static_cast<int>(qMin(file.size(), longestIni)), '\0');
    bytes.truncate(static_cast<int>(file.read(0, bytes.data(), bytes.size())));
    m_error = file.size() > longestIni ? QStringLiteral("larger than an accounts.ini can be: ") + iniPath
                                       : file.errorString();
    m_readable = m_error.isEmpty();
    if (!m_readable)
        return;
    QTextStream stream(bytes);
    stream.setCodec("UTF-8");
    QString line;
    while (stream.readLineInto(&line))
        m_lines.append(line.trimmed());
}

std::optional<QString> OperaAccounts::sectionName(const QString &key) const
{
    std::optional<QString> name;
    const QString head = QLatin1Char('[') + key + QLatin1Char(']');
    for (int i = 0; i < m_lines.size(); ++i) {
        if (!m_lines.at(i).startsWith(head, m_rule.key))
            continue;
        std::optional<QString> found;
        const int end = qMin(i + sectionLines, m_lines.size() - 1);
        while (!found && i < end)
            found = nameInLine(m_lines.at(++i), m_rule.take);
        if (found)
            name = found;
        if (m_rule.sections == OperaAccountRule::Sections::First)
            break;
    }
    return name;
}

QString OperaAccounts::nameOf(const QString &key)
{
    const bool known = m_rule.skipsEmptyKey ? key.isEmpty() : key == m_key;
    if (known)
        return m_name;
    m_key = key;
    if (!m_sectionNames.contains(key))
        m_sectionNames.insert(key, sectionName(key));
    const std::optional<QString> &found = m_sectionNames[key];
    if (found)
        m_name = *found;
    else if (!m_readable || !m_rule.carriesOver)
        m_name.clear();
    if (m_name.isEmpty())
        m_name = key;
    return m_name;
}
