#include "text/part_index.h"

#include <QMap>

namespace
{
const QString suffix = QStringLiteral(".emlxpart");

// Every beginning of a path component that ends in a dot.
template <typename Visit>
void eachStemEnd(const QString &path, Visit visit)
{
    int component = 0;
    for (int i = 0; i < path.size(); ++i) {
        if (path.at(i) == QLatin1Char('/'))
            component = i + 1;
        else if (path.at(i) == QLatin1Char('.'))
            visit(path.mid(component, i + 1 - component));
    }
}

qlonglong partNumber(QString path)
{
    if (path.endsWith(suffix))
        path.chop(suffix.size());
    return path.mid(path.lastIndexOf(QLatin1Char('.')) + 1).toLongLong();
}
} // namespace

PartIndex::PartIndex(const QStringList &parts) : m_parts(parts), m_taken(static_cast<size_t>(parts.size()))
{
    for (int i = 0; i < parts.size(); ++i)
        eachStemEnd(parts.at(i), [&](const QString &stemEnd) { m_byStemEnd.insert(stemEnd, i); });
}

QStringList PartIndex::takeParts(const QString &messagePath)
{
    const QString stem = messagePath.left(messagePath.lastIndexOf(QLatin1String(".partial.emlx")) + 1);
    QMap<int, qlonglong> numbers; // index of the part -> its number
    for (const int part : m_byStemEnd.values(stem.mid(stem.lastIndexOf(QLatin1Char('/')) + 1)))
        if (!m_taken[static_cast<size_t>(part)] && m_parts.at(part).contains(stem))
            numbers.insert(part, partNumber(m_parts.at(part)));
    QMultiMap<qlonglong, int> ordered;
    for (auto part = numbers.constEnd(); part != numbers.constBegin();) {
        --part; // a map gives the value inserted last first
        m_taken[static_cast<size_t>(part.key())] = true;
        ordered.insert(part.value(), part.key());
    }
    QStringList taken;
    for (const int part : ordered)
        if (!taken.contains(m_parts.at(part)))
            taken.append(m_parts.at(part));
    return taken;
}

QStringList PartIndex::left() const
{
    QStringList parts;
    for (int i = 0; i < m_parts.size(); ++i)
        if (!m_taken[static_cast<size_t>(i)])
            parts.append(m_parts.at(i));
    return parts;
}
