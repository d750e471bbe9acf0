#include "save/mail_separator.h"

#include <algorithm>

namespace
{
constexpr const char *days[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
constexpr const char *months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// A zone by its name (RFC 5322, 4.3).
struct Zone {
    const char *name;
    int hours;
};
constexpr Zone zones[] = {{"EST", -5}, {"EDT", -4}, {"CST", -6}, {"CDT", -5}, {"MST", -7},
                          {"MDT", -6}, {"PST", -8}, {"PDT", -7}, {"CET", 1},  {"CEST", 2}};

QByteArray withoutLineEnd(std::string_view line)
{
    QByteArray text(line.data(), static_cast<int>(line.size()));
    while (text.endsWith('\n') || text.endsWith('\r'))
        text.chop(1);
    return text;
}

// Steps over a comment, which may hold others, or a quoted string. Gives the place behind it.
int behindQuoted(const QByteArray &text, int at)
{
    const bool comment = text.at(at) == '(';
    int depth = 1;
    for (++at; at < text.size() && depth > 0; ++at) {
        const char byte = text.at(at);
        if (byte == '\\')
            ++at;
        else if (comment && byte == '(')
            ++depth;
        else if (byte == (comment ? ')' : '"'))
            --depth;
    }
    return qMin(at, text.size());
}

QByteArray withoutComments(const QByteArray &text)
{
    QByteArray rest;
    for (int at = 0; at < text.size();) {
        const int end = text.at(at) == '(' || text.at(at) == '"' ? behindQuoted(text, at) : at + 1;
        rest += text.at(at) == '(' ? QByteArray(" ") : text.mid(at, end - at);
        at = end;
    }
    return rest;
}

// The first entry of a list: up to a comma, or to the ";" that ends a group, outside of quoted strings and "<>".
QByteArray firstEntry(const QByteArray &list)
{
    QByteArray entry;
    bool inAngle = false;
    for (int at = 0; at < list.size();) {
        const char byte = list.at(at);
        const int end = byte == '"' ? behindQuoted(list, at) : at + 1;
        if (!inAngle && byte == ':' && !entry.contains('@')) {
            entry.clear(); // the name of a group
        } else if (!inAngle && (byte == ',' || byte == ';')) {
            if (!entry.trimmed().isEmpty())
                break;
            entry.clear();
        } else {
            inAngle = byte == '<' || (inAngle && byte != '>');
            entry += list.mid(at, end - at);
        }
        at = end;
    }
    return entry.trimmed();
}

std::optional<int> monthOf(const QByteArray &word)
{
    for (int i = 0; i < 12; ++i)
        if (word.left(3).compare(months[i], Qt::CaseInsensitive) == 0)
            return i + 1;
    return std::nullopt;
}

std::optional<QTime> timeOf(const QByteArray &word)
{
    const QList<QByteArray> parts = word.split(':');
    if (parts.size() < 2 || parts.size() > 3)
        return std::nullopt;
    bool isNumber[3] = {false, false, true};
    const int hour = parts.at(0).toInt(&isNumber[0]);
    const int minute = parts.at(1).toInt(&isNumber[1]);
    const int second = parts.size() > 2 ? parts.at(2).left(2).toInt(&isNumber[2]) : 0;
    const QTime time(hour, minute, qMin(second, 59)); // a leap second
    return isNumber[0] && isNumber[1] && isNumber[2] && second <= 60 && time.isValid()
               ? std::make_optional(time)
               : std::nullopt;
}

// Seconds east of Greenwich; zones that nobody knows count as UTC, as RFC 5322 has it.
int offsetOf(QByteArray zone)
{
    zone.replace(':', "");
    const bool signedZone = zone.startsWith('+') || zone.startsWith('-');
    if (signedZone && zone.size() >= 5) {
        bool isNumber = false;
        const int number = zone.mid(1, 4).toInt(&isNumber);
        const int seconds = (number / 100 * 60 + number % 100) * 60;
        return !isNumber ? 0 : zone.startsWith('-') ? -seconds : seconds;
    }
    for (const Zone &row : zones)
        if (zone.compare(row.name, Qt::CaseInsensitive) == 0)
            return row.hours * 3600;
    return 0;
}

int fullYear(const QByteArray &word, int year)
{
    if (word.size() == 2)
        return year + (year < 50 ? 2000 : 1900);
    return word.size() == 3 ? year + 1900 : year;
}

std::optional<QDateTime> utcOf(const QByteArray &day, const QByteArray &month, const QByteArray &year,
                               const QByteArray &time, const QByteArray &zone)
{
    bool isDay = false;
    bool isYear = false;
    const std::optional<int> monthNumber = monthOf(month);
    const std::optional<QTime> clock = timeOf(time);
    const int yearNumber = fullYear(year, year.toInt(&isYear));
    const QDate date(yearNumber, monthNumber.value_or(0), day.toInt(&isDay));
    if (!clock || !isDay || !isYear || yearNumber < 1 || !date.isValid())
        return std::nullopt;
    return QDateTime(date, *clock, Qt::UTC).addSecs(-offsetOf(zone));
}
} // namespace

std::optional<QByteArray> headerValue(std::string_view headers, std::string_view name)
{
    std::optional<QByteArray> value;
    while (!headers.empty()) {
        const std::string_view line = headers.substr(0, headers.find('\n'));
        headers.remove_prefix(std::min(line.size() + 1, headers.size()));
        const QByteArray text = withoutLineEnd(line);
        const bool fold = text.startsWith(' ') || text.startsWith('\t');
        if (text.isEmpty() || (value && !fold))
            break;
        const int colon = text.indexOf(':');
        if (value)
            *value += text;
        else if (!fold && colon > 0 &&
                 text.left(colon).trimmed().compare(QByteArray(name.data(), static_cast<int>(name.size())),
                                                    Qt::CaseInsensitive) == 0)
            value = text.mid(colon + 1);
    }
    return value ? std::make_optional(value->trimmed()) : std::nullopt;
}

QByteArray firstAddress(const QByteArray &list)
{
    const QByteArray entry = firstEntry(withoutComments(list));
    QByteArray address = entry;
    if (const int open = entry.lastIndexOf('<'); open >= 0) {
        const int close = entry.indexOf('>', open);
        address = entry.mid(open + 1, close < 0 ? -1 : close - open - 1).trimmed();
        if (address.startsWith('@'))
            address = address.mid(address.lastIndexOf(':') + 1); // a route before it
    }
    const bool fits = std::none_of(address.begin(), address.end(),
                                   [](char byte) { return (byte >= 0 && byte <= ' ') || byte == 0x7F; });
    return fits ? address : QByteArray();
}

std::optional<QDateTime> mailDate(const QByteArray &date)
{
    QList<QByteArray> words = withoutComments(date).replace(',', ' ').simplified().split(' ');
    if (!words.isEmpty() && std::any_of(std::begin(days), std::end(days), [&](const char *day) {
            return words.first().left(3).compare(day, Qt::CaseInsensitive) == 0;
        }))
        words.removeFirst();
    if (!words.isEmpty() && words.first().count('-') == 2)
        words = words.first().split('-') + words.mid(1); // "5-Nov-2014"
    if (words.size() < 4)
        return std::nullopt;
    if (!monthOf(words.at(0)))
        return utcOf(words.at(0), words.at(1), words.at(2), words.at(3), words.value(4));
    // As asctime writes it, "Nov 12 14:38:04 2014"; a zone may stand before the year or behind it.
    const bool zoneFirst = words.size() > 4 && words.at(4).size() == 4 && words.at(4).toInt() > 0;
    return utcOf(words.at(1), words.at(0), words.at(zoneFirst ? 4 : 3), words.at(2),
                 words.value(zoneFirst ? 3 : 4));
}

QByteArray separatorLine(const QByteArray &from, const QDateTime &utc)
{
    const QByteArray address = firstAddress(from);
    const QDate date = utc.date();
    return "From " + (address.isEmpty() ? QByteArray("MAILER-DAEMON") : address) + ' ' +
           days[date.dayOfWeek() - 1] + ' ' + months[date.month() - 1] + ' ' +
           QByteArray::number(date.day()).rightJustified(2) + ' ' +
           utc.time().toString(QStringLiteral("HH:mm:ss")).toLatin1() + ' ' +
           QByteArray::number(date.year()) + '\n';
}
