#include "text/header_rules.h"

#include "text/encoded_word.h"
#include "text/remove_all.h"

/// What differs between the users of the rules. Each member is one thing, and no two are set alike in all rows.
struct HeaderDialect {
    enum class Tail { Decoded, AsQ, None };
    enum class Folds { InLine, Apart };

    Folds senderFolds; ///< a sender's folded lines are part of its line, or come apart and are decoded each
    /// A decoded sender has "From: " before it while its first line is picked, and loses it then.
    bool labelsSender;
    bool quotedSender; ///< `From: "=?` starts an encoded word as well
    /// How a value with more behind its first word's start is decoded. A sender: Decoded as B or Q, AsQ always as Q; a
    /// subject, either way, in its word's encoding. None: by decodeFirstPiece.
    Tail tail;
    bool onlyFirstSenderLine; ///< of a sender in several lines the first that is not empty counts
    bool
        wordAnywhere; ///< a subject's word may stand behind text; one at the line's end is freed of stray marks
    bool
        tokensInFolds; ///< "=?UTF-8?Q?" counts in a subject's folds too; in its first line only behind a blank
    bool dropsEmptySubject; ///< "Subject:" with nothing behind it is ""
};

namespace
{
using Tail = HeaderDialect::Tail;
using Folds = HeaderDialect::Folds;

const QString senderLabel = QStringLiteral("From: ");
const QString wordEnd = QStringLiteral("?=");
const QString wordEndsLine = QStringLiteral("?=\n");
const QString utf8Token = QStringLiteral("=?UTF-8?Q?");
} // namespace

// clang-format off
//                                          folds          labels quoted tail           first  any    tokens drops
const HeaderDialect singleFileHeaders   {Folds::InLine, true,  true,  Tail::Decoded, false, true,  true,  true };
const HeaderDialect mailboxHeaders      {Folds::InLine, true,  true,  Tail::AsQ,     true,  false, false, true };
const HeaderDialect listHeaders         {Folds::Apart,  true,  true,  Tail::Decoded, false, true,  false, false};
const HeaderDialect mailboxIndexHeaders {Folds::Apart,  false, true,  Tail::AsQ,     true,  false, false, true };
const HeaderDialect operaIndexHeaders   {Folds::Apart,  false, false, Tail::None,    false, false, false, true };
// clang-format on

namespace
{
bool startsWithAnyCase(const QString &text, const char *start)
{
    return text.startsWith(QLatin1String(start), Qt::CaseInsensitive);
}

void removeTokens(QString *text)
{
    removeAll(text, utf8Token);
    removeAll(text, wordEnd);
}

// A word that ends the line: decoded behind `label`, or left as it stands for an unknown encoding.
QString decodeWholeLine(QString text, const WordStart &word, const QString &label)
{
    text.chop(wordEndsLine.size());
    return decodeWord(&text, word) ? label + text : text;
}

// What stands between the first "?=", at `end`, and the second one or the end of the text.
QString secondPiece(const QString &text, int end)
{
    const int start = end + wordEnd.size();
    const int next = text.indexOf(wordEnd, start);
    return text.mid(start, next < 0 ? -1 : next - start);
}

// A word with text behind it: the first two pieces between "?=" count, the second without its last character.
QString decodeFirstPiece(const QString &text, const WordStart &word, const QString &label)
{
    const int end = text.indexOf(wordEnd);
    if (end < 0)
        return text;
    QString first = text.left(end);
    const QString start = decodeWord(&first, word) ? label + first : text;
    QString second = secondPiece(text, end);
    second.chop(1);
    return start + second;
}

// The continuation rule: each folded line, decoded where it starts with an encoded word, joined to the text.
void appendFolds(QString *text, const QStringList &folds, QString charset, bool stripsTokens)
{
    for (QString line : folds) {
        WordStart word{charset, QString()};
        if (startsWithAnyCase(line, " =?") || startsWithAnyCase(line, "\t=?")) {
            line.remove(0, 3);
            word = takeWordStart(&line);
            charset = word.charset;
        }
        if (line.endsWith(wordEndsLine)) {
            line.chop(wordEndsLine.size());
            decodeWord(&line, word);
        } else if (stripsTokens && (line.contains(utf8Token) || line.contains(wordEnd))) {
            removeTokens(&line);
            decodeWord(&line, word);
        } else if (const int end = line.indexOf(wordEnd); end >= 0) {
            QString first = line.left(end);
            line = (decodeWord(&first, word) ? first : line) + secondPiece(line, end);
        }
        *text += line;
    }
}

QString firstNonEmptyLine(const QString &text)
{
    return text.section(QLatin1Char('\n'), 0, 0, QString::SectionSkipEmpty);
}

// Behind a word's start a sender may hold "Q?" and "?=" of this or a further word; they go, and what is left is
// decoded as a whole. Gives false where nothing of the kind stands.
bool decodeSenderTail(QString *text, const WordStart &start, Tail tail)
{
    const QString qMark = QStringLiteral("Q?");
    const QString bMark = QStringLiteral("B?");
    const bool endCounts = tail == Tail::AsQ || start.encoding != QLatin1String("B");
    if (tail == Tail::None || !(text->contains(qMark) || (endCounts && text->contains(wordEnd))))
        return false;
    removeAll(text, qMark);
    WordStart word{start.charset, QStringLiteral("Q")};
    if (tail == Tail::Decoded && text->startsWith(bMark)) {
        removeAll(text, bMark);
        removeAll(text, QStringLiteral("=?=\""));
        *text = text->left(text->indexOf(QLatin1Char('<')));
        word.encoding = QStringLiteral("B");
    } else {
        removeAll(text, wordEnd);
    }
    decodeWord(text, word);
    return true;
}

// The sender's first line behind its encoded word's start; the charset taken goes to `charset`.
QString decodeSenderLine(QString text, const HeaderDialect &dialect, QString *charset)
{
    const bool isWord = startsWithAnyCase(text, "From: =?") ||
                        (dialect.quotedSender && startsWithAnyCase(text, "From: \"=?"));
    if (!isWord)
        return text;
    const QString label = dialect.labelsSender ? senderLabel : QString();
    // With a quotation mark the "?" stays: the charset comes out empty, the encoding is the charset's name.
    text.remove(0, 8);
    const WordStart word = takeWordStart(&text);
    *charset = word.charset;
    if (text.endsWith(wordEndsLine))
        return decodeWholeLine(text, word, label);
    if (decodeSenderTail(&text, word, dialect.tail))
        return text;
    return decodeFirstPiece(text, word, label);
}

// Where the subject's encoded word starts, and what it is called.
enum class SubjectForm { Plain, WordFirst, WordBehindText };

SubjectForm takeSubjectStart(QString *text, const HeaderDialect &dialect, WordStart *word)
{
    if (startsWithAnyCase(*text, "Subject: =?")) {
        text->remove(0, 11);
        *word = takeWordStart(text);
        return SubjectForm::WordFirst;
    }
    if (!dialect.wordAnywhere || !startsWithAnyCase(*text, "Subject: "))
        return SubjectForm::Plain;
    text->remove(0, 9);
    word->charset = word->encoding = text->left(text->indexOf(QLatin1Char('?')));
    if (text->contains(utf8Token))
        word->encoding = QStringLiteral("Q");
    return SubjectForm::WordBehindText;
}

QString decodeSubjectWord(QString text, SubjectForm form, const WordStart &word, const HeaderDialect &dialect)
{
    if (text.endsWith(wordEndsLine)) {
        text.chop(wordEndsLine.size());
        if (word.encoding == QLatin1String("Q") && dialect.wordAnywhere)
            removeTokens(&text);
        const QString padding = QStringLiteral("Q==");
        if (word.encoding == QLatin1String("B") && dialect.wordAnywhere && form == SubjectForm::WordFirst &&
            text.endsWith(padding))
            removeAll(&text, padding);
        decodeWord(&text, word);
        return text;
    }
    const bool endCounts =
        !(dialect.tokensInFolds && form == SubjectForm::WordFirst && word.encoding == QLatin1String("B"));
    const bool needsBlank = form == SubjectForm::WordBehindText || dialect.tokensInFolds;
    const QString token = needsBlank ? QLatin1Char(' ') + utf8Token : utf8Token;
    if (dialect.tail != Tail::None && (text.contains(token) || (endCounts && text.contains(wordEnd)))) {
        removeTokens(&text);
        decodeWord(&text, word);
        return text;
    }
    return decodeFirstPiece(text, word, QString());
}
} // namespace

bool isFold(const QString &line)
{
    return line.startsWith(QLatin1Char(' ')) || line.startsWith(QLatin1Char('\t'));
}

QString decodeSender(const QString &line, const QStringList &folds, const HeaderDialect &dialect)
{
    QString charset;
    QString text = decodeSenderLine(line, dialect, &charset);
    const auto cutToFirstLine = [&] {
        if (dialect.onlyFirstSenderLine && text.contains(QLatin1Char('\n')))
            text = firstNonEmptyLine(text);
    };
    if (dialect.labelsSender) {
        cutToFirstLine();
        if (text.startsWith(senderLabel))
            removeAll(&text, senderLabel);
    }
    if (dialect.senderFolds == Folds::Apart) {
        appendFolds(&text, folds, charset, false);
        removeAll(&text, senderLabel);
        cutToFirstLine();
    }
    return text;
}

QString decodeSubject(const QString &line, const QStringList &folds, const HeaderDialect &dialect)
{
    QString text = line;
    WordStart word;
    const SubjectForm form = takeSubjectStart(&text, dialect, &word);
    if (form != SubjectForm::Plain)
        text = decodeSubjectWord(text, form, word, dialect);
    appendFolds(&text, folds, word.charset, dialect.tokensInFolds);
    removeAll(&text, QStringLiteral("Subject: "));
    if (dialect.dropsEmptySubject)
        removeAll(&text, QStringLiteral("Subject:\n"));
    return text;
}

QString decodeRecipients(const QString &line, const QString &label)
{
    const QString start = label + QStringLiteral("=?");
    if (!line.startsWith(start, Qt::CaseInsensitive))
        return line;
    QString text = line.mid(start.size());
    const WordStart word = takeWordStart(&text);
    return text.endsWith(wordEndsLine) ? decodeWholeLine(text, word, label)
                                       : decodeFirstPiece(text, word, label);
}
