#include "text/header_rules.h"

struct HeaderDialect {
    int placeholder = 0;
};
const HeaderDialect singleFileHeaders{};
const HeaderDialect mailboxHeaders{};
const HeaderDialect listHeaders{};
const HeaderDialect mailboxIndexHeaders{};
const HeaderDialect operaIndexHeaders{};

QString decodeSender(const QString &line, const QStringList &folds, const HeaderDialect &)
{
    return line + folds.join(QString());
}

QString decodeSubject(const QString &line, const QStringList &folds, const HeaderDialect &)
{
    return line + folds.join(QString());
}
