#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

// Files of the store that a scan has not taken into any folder, so that what it found can be believed.

/// Why a file that holds mail, or may, stands in no folder.
enum class PassedOverReason {
    Unreadable,   ///< the file, or the folder that it would lie in
    Name,         ///< no UTF-8, a line feed in it, or a blank at its end, which would name another file
    ExcludedName, ///< begins as a mailbox, but its path says that it is something else
    NoFolder,     ///< there is no place for it in the tree
    Compressed,   ///< an entry of an .olm file
    Part,         ///< an .emlxpart that no message took
    NotReached    ///< the scan ended before it
};
constexpr int passedOverReasons = 7;

/// The word in JSON: "excluded-name".
const char *nameOf(PassedOverReason reason);

/// One of them, by its absolute path.
struct PassedOverFile {
    QString path;
    PassedOverReason reason;
};

/// The files passed over by one scan; rows are kept up to a number and counted beyond.
class PassedOver
{
public:
    static constexpr size_t mostFiles = 1000;

    /// A new scan begins.
    void clear() { *this = PassedOver(); }
    /// Tells of a file or folder; kept up to mostFiles.
    void add(const QString &path, PassedOverReason reason);
    /// A regular file that holds no mail.
    void addOther() { ++m_otherFiles; }

    /// Those that were kept, in the order told.
    const std::vector<PassedOverFile> &files() const { return m_files; }
    /// Files of a reason that were not kept.
    qint64 beyond(PassedOverReason reason) const { return m_beyond[static_cast<size_t>(reason)]; }
    /// How many addOther has told of.
    qint64 otherFiles() const { return m_otherFiles; }
    /// All rows of all reasons, kept or not.
    qint64 count() const;
    /// "/mail/Inbox: can't be read" for each row that was kept, and how many more there are.
    QStringList sentences() const;

private:
    std::vector<PassedOverFile> m_files;
    std::array<qint64, passedOverReasons> m_beyond = {};
    qint64 m_otherFiles = 0;
};

/// What the last scan passed over (writer: the scan thread; reset: the start of each scan).
inline PassedOver passedOver;
