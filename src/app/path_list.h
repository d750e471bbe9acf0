#pragma once

#include <QSet>
#include <QStringList>

/// A list of paths that is also asked "do you hold this one?" for every file: order as appended, look-up by
/// hash, case-sensitive.
class PathList
{
public:
    /// Appends a path; one may stand there twice.
    void append(const QString &path)
    {
        m_paths.append(path);
        m_known.insert(path);
    }
    /// True if the list holds the path, at a cost that does not grow with it.
    bool contains(const QString &path) const { return m_known.contains(path); }
    /// All of them, in the order appended.
    const QStringList &paths() const { return m_paths; }
    int size() const { return m_paths.size(); }
    void clear()
    {
        m_paths.clear();
        m_known.clear();
    }

private:
    QStringList m_paths;
    QSet<QString> m_known;
};
