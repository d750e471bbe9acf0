#pragma once

#include <QByteArray>
#include <QDateTime>

#include <optional>
#include <string_view>

// The line before a message of a mailbox: "From ADDRESS DATE" (mbox, RFC 4155).

/// The value of the first header of this name (any case, no colon) in a message's header block, folds joined by their
/// blanks; nothing where there is none. `headers`: bytes from the message's start on; what stands behind its first empty
/// line is not looked at.
std::optional<QByteArray> headerValue(std::string_view headers, std::string_view name);

/// The bare first address of an address list (RFC 5322, 3.4), comments and names left out; "" where there is none that
/// can stand in a separator.
QByteArray firstAddress(const QByteArray &list);

/// A time as a Date header gives it (RFC 5322, 3.3, obsolete zones and years of two digits too, or as asctime writes
/// it), in UTC; nothing where it can't be read.
std::optional<QDateTime> mailDate(const QByteArray &date);

/// The separator, line feed included: "From ann@example.org Thu Nov  5 14:38:04 2014". `from` is the From header's value;
/// MAILER-DAEMON stands for an address that is not there.
QByteArray separatorLine(const QByteArray &from, const QDateTime &utc);
