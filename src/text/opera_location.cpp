#include "text/opera_location.h"

#include "text/byte_search.h"
#include "text/line_reader.h"

#include <QStringList>

#include <algorithm>

std::optional<QString> operaLocationAround(const QString &line)
{
    const QStringList pieces = line.split(
        QLatin1String(operaLocationMark.data(), int(operaLocationMark.size())), Qt::SkipEmptyParts);
    return pieces.isEmpty() ? std::nullopt : std::make_optional(pieces.first().trimmed());
}

void takeOperaFolderBehind(std::string_view lines, QString *folder)
{
    std::string_view value;
    for (size_t at = findText(lines, operaLocationMark); at < lines.size();
         at = findText(lines, operaLocationMark, at)) {
        const size_t start = at + operaLocationMark.size();
        at = std::min(lines.find('\n', start), lines.size());
        value = lines.substr(start, at - start);
    }
    if (!value.data())
        return;
    *folder = operaFolderOf(wholeLineText(value).trimmed());
    if (folder->isNull())
        *folder = QStringLiteral("");
}

QString operaFolderOf(const QString &location)
{
    return location.left(location.lastIndexOf(QLatin1Char(':')));
}

QString operaLabelOf(const QString &location)
{
    if (!location.contains(QLatin1Char(':')))
        return location;
    const QStringList pieces = location.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    const QStringList folders = pieces.value(pieces.size() - 2).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    return folders.value(folders.size() - 1);
}
