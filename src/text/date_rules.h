#pragma once

#include <QString>

/// Names of time zones that are taken out of a date: "CDT" and its like; or " (India Standard Time)" as well.
enum class ZoneNames { Common, CommonAndIndia };

/// The date shown for a Date header (RFC 5322, 3.3; also what "%a, %d %b %Y %H:%M:%S %z" gives): zone names and
/// commas are taken out, five forms are tried in turn, and the first that fits is written as
/// "05 Mar 2012 02:07:09 PM". No zone arithmetic. "" if none fits.
QString displayDate(const QString &date, ZoneNames zones);

/// A time of the form year-month-dayThour:minute:second, taken as UTC, in local time as
/// "Wed, 12 Nov 2014 14:38:04 +0530". Numbers that are none read as 0.
QString timeconverter1(const QString &text);
