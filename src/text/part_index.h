#pragma once

#include <QMultiHash>
#include <QString>
#include <QStringList>

#include <vector>

/// The .emlxpart files of a store, to be taken by the messages that they belong to; each is taken once. A part
/// belongs to a message if its path contains the message's stem, the path of the .partial.emlx up to and
/// including the dot before "partial". Found by hash, so that the cost does not grow with messages times parts.
class PartIndex
{
public:
    explicit PartIndex(const QStringList &parts);

    /// The parts of the message in this .partial.emlx file: no duplicates, ordered by the number between their
    /// last dot and ".emlxpart". They are then no longer in the index.
    QStringList takeParts(const QString &messagePath);
    /// The parts that nobody has taken, in the order given.
    QStringList left() const;

private:
    QStringList m_parts;
    std::vector<bool> m_taken;
    QMultiHash<QString, int>
        m_byStemEnd; ///< "<id>." of each component up to each of its dots -> index of the part
};
