#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// Header fields of a message that is composed (RFC 5322), each with its line feed: UTF-8 as encoded words (RFC 2047),
// lines folded at 76 characters where a blank allows it, control characters as blanks.

/// A person in an address list; either may be empty.
struct MailPerson {
    QString name;
    QString address;
};

/// "Subject: TEXT".
QByteArray textHeader(const QByteArray &name, const QString &text);
/// "To: NAME <ADDRESS>, ..."; "" for an empty list.
QByteArray peopleHeader(const QByteArray &name, const QList<MailPerson> &people);
/// "References: <ID> <ID>": the words of a text, with "<" and ">" where they lack; "" without one.
QByteArray idsHeader(const QByteArray &name, const QString &ids);
/// A parameter of a field on a line of its own, its ";" before it (`;\n\tname="plan.pdf"`); RFC 2231 where plain text
/// can't hold it.
QByteArray headerParameter(const QByteArray &name, const QString &value);
