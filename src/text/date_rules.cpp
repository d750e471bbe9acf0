#include "text/date_rules.h"

#include "text/remove_all.h"

#include <QStringList>

#include <ctime>

#include <locale.h>

namespace
{
constexpr int parsedBytes = 34;
constexpr size_t shownBytes = 32;

const char *const zoneNames[] = {" (UTC)", " CDT", " EDT", " EST", " CST", " DST"};
const char indiaZone[] = " (India Standard Time)";

const char *const dateForms[] = {
    "%A %d %b %Y %H:%M:%S %z", "%d %b %y %H:%M:%S",    "%d %b %Y %H:%M:%S",
    "%B %d %Y %H:%M %p",       "%A %d %b %Y %H:%M:%S",
};

// Names of days and months in mail are English, whatever the user's language.
locale_t mailLocale()
{
    static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

// The wall clock as the number of seconds that it would be in UTC (proleptic Gregorian calendar); months and
// days out of range carry over.
qint64 secondsOf(qint64 year, qint64 month, qint64 day, qint64 hour, qint64 minute, qint64 second)
{
    std::tm time = {};
    time.tm_year = static_cast<int>(qBound<qint64>(-1000000, year, 1000000) - 1900);
    time.tm_mon = static_cast<int>(qBound<qint64>(-1000000, month, 1000000) - 1);
    time.tm_mday = static_cast<int>(qBound<qint64>(-1000000, day, 1000000));
    return static_cast<qint64>(::timegm(&time)) + hour * 3600 + minute * 60 + second;
}

QString formatted(const char *form, const std::tm &time, size_t bytes)
{
    char text[64] = {};
    return ::strftime_l(text, qMin(bytes, sizeof text), form, &time, mailLocale()) > 0
               ? QString::fromLatin1(text)
               : QString();
}
} // namespace

QString displayDate(const QString &date, ZoneNames zones)
{
    QString text = date;
    for (const char *zone : zoneNames)
        removeAll(&text, QLatin1String(zone));
    if (zones == ZoneNames::CommonAndIndia)
        removeAll(&text, QLatin1String(indiaZone));
    text.remove(QLatin1Char(',')).remove(QLatin1Char('\n'));
    const QByteArray bytes = text.toLatin1().left(parsedBytes);
    for (const char *form : dateForms) {
        std::tm time = {};
        time.tm_mday = 1;
        if (::strptime_l(bytes.constData(), form, &time, mailLocale()))
            return formatted("%d %b %Y %I:%M:%S %p", time, shownBytes);
    }
    return {};
}

QString timeconverter1(const QString &text)
{
    const QStringList halves = text.split(QLatin1Char('T'));
    const QStringList date = halves.value(0).split(QLatin1Char('-'));
    const QStringList clock = halves.value(1).split(QLatin1Char(':'));
    const auto number = [](const QStringList &pieces, int i) { return qint64(pieces.value(i).toInt()); };
    const auto seconds = static_cast<time_t>(secondsOf(number(date, 0), number(date, 1), number(date, 2),
                                                       number(clock, 0), number(clock, 1), number(clock, 2)));
    std::tm local = {};
    return ::localtime_r(&seconds, &local) ? formatted("%a, %d %b %Y %H:%M:%S %z", local, 40) : QString();
}
