#include "text/part_index.h"

#include <QSet>

#include <algorithm>

namespace
{
const QString suffix = QStringLiteral(".emlxpart");

// A message prefix starts with the store's path, so only where the path's first component stands again can one begin.
template <typename Visit>
void eachPrefix(const QString &path, Visit visit)
{
    const QString root = path.left(path.indexOf(QLatin1Char('/'), 1) + 1);
    for (int start = 0; start >= 0; start = path.indexOf(root, start + 1))
        for (int dot = path.indexOf(QLatin1Char('.'), start); dot >= 0;
             dot = path.indexOf(QLatin1Char('.'), dot + 1))
            visit(path.midRef(start, dot + 1 - start));
}

// The number in front of the ".emlxpart" at `end`, 0 if it is none.
qlonglong numberBefore(const QString &path, int end)
{
    const int dot = end > 0 ? path.lastIndexOf(QLatin1Char('.'), end - 1) : -1;
    return path.midRef(dot + 1, end - dot - 1).toLongLong();
}

qlonglong numberOf(const QString &path)
{
    return numberBefore(path, path.endsWith(suffix) ? path.size() - suffix.size() : path.size());
}

struct NumberedPart {
    qlonglong number;
    int part; ///< index
    bool operator<(const NumberedPart &other) const
    {
        return number < other.number || (number == other.number && part < other.part);
    }
    bool operator==(const NumberedPart &other) const { return number == other.number && part == other.part; }
};

// The numbers N whose ".N.emlxpart" the path contains, in any of its components.
template <typename Visit>
void eachNumber(const QString &path, Visit visit)
{
    for (int end = path.indexOf(suffix); end >= 0; end = path.indexOf(suffix, end + 1)) {
        const qlonglong number = numberBefore(path, end);
        const QString written = QLatin1Char('.') + QString::number(number);
        if (path.midRef(0, end).endsWith(written))
            visit(number);
    }
}
} // namespace

PartIndex::PartIndex(const QStringList &parts) : m_parts(parts), m_taken(static_cast<size_t>(parts.size()))
{
    for (int i = 0; i < parts.size(); ++i)
        eachPrefix(parts.at(i), [&](const QStringRef &prefix) { m_byPrefix.insert(qHash(prefix), i); });
}

// The parts that contain the message prefix and are still there, in the order given.
std::vector<int> PartIndex::takeOwn(const QString &prefix)
{
    std::vector<int> own;
    const uint hash = qHash(QStringRef(&prefix));
    for (auto part = m_byPrefix.constFind(hash); part != m_byPrefix.constEnd() && part.key() == hash;
         ++part) {
        if (m_taken[static_cast<size_t>(*part)] || !m_parts.at(*part).contains(prefix))
            continue;
        m_taken[static_cast<size_t>(*part)] = true;
        own.push_back(*part);
    }
    std::sort(own.begin(), own.end());
    return own;
}

QStringList PartIndex::takeParts(const QString &messagePath)
{
    const QString prefix = messagePath.left(messagePath.lastIndexOf(QLatin1String(".partial.emlx")) + 1);
    QSet<QString> known;
    QSet<qlonglong> numbers;
    std::vector<int> own;
    for (const int part : takeOwn(prefix)) {
        if (known.contains(m_parts.at(part)))
            continue;
        known.insert(m_parts.at(part));
        numbers.insert(numberOf(m_parts.at(part)));
        own.push_back(part);
    }
    std::vector<NumberedPart> ordered;
    for (const int part : own)
        eachNumber(m_parts.at(part), [&](qlonglong number) {
            if (numbers.contains(number))
                ordered.push_back({number, part});
        });
    std::sort(ordered.begin(), ordered.end());
    ordered.erase(std::unique(ordered.begin(), ordered.end()), ordered.end());
    QStringList taken;
    for (const NumberedPart &numbered : ordered)
        taken.append(m_parts.at(numbered.part));
    return taken;
}
