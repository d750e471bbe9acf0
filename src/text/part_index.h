#pragma once

#include <QMultiHash>
#include <QString>
#include <QStringList>

#include <vector>

/// The .emlxpart files of a store, to be taken by the messages that they belong to; each is taken once. A part
/// belongs to a message if its path contains the message prefix, the path of the .partial.emlx up to and
/// including the dot before "partial". Found by hash, so that the cost does not grow with messages times parts.
/// All paths are those of one search: they begin with the same folder.
class PartIndex
{
public:
    /// The paths of all parts of a store.
    explicit PartIndex(const QStringList &parts);

    /// Takes the parts of the message in this .partial.emlx file out of the index and gives them in the order in
    /// which their contents belong into it: by the number N in ".N.emlxpart", those of one number as they came,
    /// no path twice. A part whose number is not written so ("02", "x") is taken but not given.
    QStringList takeParts(const QString &messagePath);

private:
    std::vector<int> takeOwn(const QString &prefix);

    QStringList m_parts;
    std::vector<bool> m_taken;
    /// Hash of each piece of a path that can be a message prefix -> index of the part.
    QMultiHash<uint, int> m_byPrefix;
};
