#include "app/passed_over.h"

#include <QCoreApplication>

#include <iterator>
#include <numeric>

namespace
{
constexpr const char *reasonNames[] = {"unreadable", "name", "excluded-name", "no-folder",
                                       "compressed", "part", "not-reached"};
static_assert(std::size(reasonNames) == passedOverReasons);

constexpr const char *reasonTexts[] = {
    QT_TRANSLATE_NOOP("PassedOver", "can't be read"),
    QT_TRANSLATE_NOOP("PassedOver", "its name can't be carried through"),
    QT_TRANSLATE_NOOP("PassedOver", "begins as a mailbox, but has the name of something else"),
    QT_TRANSLATE_NOOP("PassedOver", "lies in no mailbox"),
    QT_TRANSLATE_NOOP("PassedOver", "is compressed"),
    QT_TRANSLATE_NOOP("PassedOver", "is a part that belongs to no message"),
    QT_TRANSLATE_NOOP("PassedOver", "was not reached"),
};
static_assert(std::size(reasonTexts) == passedOverReasons);

QString translated(const char *text)
{
    return QCoreApplication::translate("PassedOver", text);
}
} // namespace

const char *nameOf(PassedOverReason reason)
{
    return reasonNames[static_cast<size_t>(reason)];
}

void PassedOver::add(const QString &path, PassedOverReason reason)
{
    if (m_files.size() < mostFiles)
        m_files.push_back({path, reason});
    else
        ++m_beyond[static_cast<size_t>(reason)];
}

qint64 PassedOver::count() const
{
    return std::accumulate(m_beyond.begin(), m_beyond.end(), static_cast<qint64>(m_files.size()));
}

QStringList PassedOver::sentences() const
{
    QStringList lines;
    for (const PassedOverFile &file : m_files)
        lines.append(file.path + QStringLiteral(": ") +
                     translated(reasonTexts[static_cast<size_t>(file.reason)]));
    if (const qint64 more = count() - static_cast<qint64>(m_files.size()); more > 0)
        lines.append(translated(QT_TRANSLATE_NOOP("PassedOver", "and %1 more")).arg(more));
    return lines;
}
