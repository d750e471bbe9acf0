#include "text/mail_header.h"

#include <QRegularExpression>
#include <QStringList>
#include <QVector>

#include <algorithm>

namespace
{
constexpr int lineLength = 76;
constexpr int longestWord = 900;     // what no line can hold unbroken (RFC 5322, 2.1.1)
constexpr int longestPhrase = 60;    // of a name that stands as it is
constexpr int encodedWordBytes = 39; // in a word of 64 characters, so that a short name stands before it
constexpr int longestPlainValue = 200;
constexpr int segmentLength = 60;

bool isAscii(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c < QChar(0x7F); });
}

QString withoutControls(QString text)
{
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c < QChar(0x20) || c == QChar(0x7F); },
        QLatin1Char(' '));
    return text;
}

bool hasLongWord(const QString &text)
{
    const QStringList words = text.split(QLatin1Char(' '));
    return std::any_of(words.begin(), words.end(),
                       [](const QString &word) { return word.size() > longestWord; });
}

// Plain text that a reader would give back as it is.
bool isPlain(const QString &text)
{
    return isAscii(text) && !text.contains(QLatin1String("=?")) && text == text.simplified() &&
           !hasLongWord(text);
}

// No character is torn apart. Blanks between two encoded words do not count, so that each can have a line.
QByteArray encodedWords(const QString &text)
{
    QList<QByteArray> words;
    QByteArray bytes;
    const auto endWord = [&] {
        if (!bytes.isEmpty())
            words.append("=?UTF-8?B?" + bytes.toBase64() + "?=");
        bytes.clear();
    };
    for (const uint character : text.toUcs4()) {
        const QByteArray utf8 = QString::fromUcs4(&character, 1).toUtf8();
        if (bytes.size() + utf8.size() > encodedWordBytes)
            endWord();
        bytes += utf8;
    }
    endWord();
    return words.join("\n ");
}

// Breaks a line at blanks.
QByteArray folded(const QByteArray &line)
{
    QByteArray text;
    int length = 0;
    const QList<QByteArray> words = line.split(' ');
    for (int i = 0; i < words.size(); ++i) {
        const bool breaks = i > 1 && !words.at(i).isEmpty() && length + 1 + words.at(i).size() > lineLength;
        text += i == 0 ? "" : breaks ? "\n " : " ";
        text += words.at(i);
        length = breaks ? words.at(i).size() + 1 : length + words.at(i).size() + 1;
    }
    return text;
}

QByteArray quotedString(const QString &text)
{
    QByteArray quoted = "\"";
    for (const char byte : text.toUtf8()) {
        if (byte == '"' || byte == '\\')
            quoted += '\\';
        quoted += byte;
    }
    return quoted + '"';
}

bool isAtom(const QString &text, const char *others)
{
    return std::all_of(text.begin(), text.end(), [others](QChar c) {
        return c > QChar(0x7F) || (c.isLetterOrNumber() && c < QChar(0x7F)) ||
               QLatin1String(others).contains(c);
    });
}

QByteArray phrase(const QString &name)
{
    const QString text = withoutControls(name).trimmed();
    if (!isPlain(text) || text.size() > longestPhrase)
        return encodedWords(text);
    return isAtom(text, " !#$%&'*+-/=?^_`{|}~") ? text.toLatin1() : quotedString(text);
}

QByteArray bareAddress(const QString &address)
{
    const QString text = withoutControls(address).simplified();
    if (isAtom(text, "!#$%&'*+-/=?^_`{|}~.@:[]"))
        return text.toUtf8();
    const int at = text.lastIndexOf(QLatin1Char('@'));
    return at < 0 ? quotedString(text) : quotedString(text.left(at)) + text.mid(at).toUtf8();
}

QByteArray mailbox(const MailPerson &person)
{
    const QByteArray address = bareAddress(person.address);
    const QByteArray name = phrase(person.name);
    if (name.isEmpty())
        return address;
    const bool longLine = name.size() - name.lastIndexOf('\n') + address.size() > lineLength;
    return name + (longLine ? "\n <" : " <") + address + '>';
}

QByteArray percentEncoded(const QString &value)
{
    return value.toUtf8().toPercentEncoding();
}
} // namespace

QByteArray textHeader(const QByteArray &name, const QString &text)
{
    const QString line = withoutControls(text);
    const bool plain = isPlain(line);
    return plain ? folded(name + ": " + line.toLatin1()) + '\n' : name + ": " + encodedWords(line) + '\n';
}

QByteArray peopleHeader(const QByteArray &name, const QList<MailPerson> &people)
{
    QList<QByteArray> entries;
    for (const MailPerson &person : people)
        if (!person.name.trimmed().isEmpty() || !person.address.trimmed().isEmpty())
            entries.append(mailbox(person));
    return entries.isEmpty() ? QByteArray() : name + ": " + entries.join(",\n ") + '\n';
}

QByteArray idsHeader(const QByteArray &name, const QString &ids)
{
    static const QRegularExpression id(QStringLiteral("<[^<>]*>|[^ ]+"));
    QList<QByteArray> words;
    for (auto match = id.globalMatch(withoutControls(ids)); match.hasNext();) {
        const QByteArray word = match.next().captured().toUtf8();
        words.append((word.startsWith('<') ? "" : "<") + word + (word.endsWith('>') ? "" : ">"));
    }
    return words.isEmpty() ? QByteArray() : folded(name + ": " + words.join(' ')) + '\n';
}

QByteArray headerParameter(const QByteArray &name, const QString &value)
{
    const QString text = withoutControls(value);
    if (isAscii(text) && text.size() <= longestPlainValue && !text.contains(QLatin1String("=?")))
        return ";\n\t" + name + '=' + quotedString(text);
    QByteArray rest = "UTF-8''" + percentEncoded(text);
    if (rest.size() <= segmentLength)
        return ";\n\t" + name + "*=" + rest;
    QByteArray parameter;
    for (int number = 0; !rest.isEmpty(); ++number) {
        int length = qMin(segmentLength, rest.size());
        while (length < rest.size() && (rest.at(length - 1) == '%' || rest.at(length - 2) == '%'))
            --length; // no "%C3" is torn apart
        parameter += ";\n\t" + name + '*' + QByteArray::number(number) + "*=" + rest.left(length);
        rest.remove(0, length);
    }
    return parameter;
}
