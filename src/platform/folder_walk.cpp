#include "platform/folder_walk.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>

namespace
{
struct FolderId {
    dev_t device;
    ino_t inode;
    bool operator==(const FolderId &other) const { return device == other.device && inode == other.inode; }
};

enum class Kind { Unknown, File, Folder };

struct Entry {
    QByteArray name;
    Kind kind;
};

Kind kindOfType(unsigned char type)
{
    return type == DT_DIR ? Kind::Folder : type == DT_REG ? Kind::File : Kind::Unknown;
}

// All at once, so that no folder stays open on the way down. `error` gets the system's number where not all could be
// read.
std::vector<Entry> entriesOf(const QByteArray &folder, int *error)
{
    std::vector<Entry> entries;
    errno = 0;
    DIR *stream = ::opendir(folder.constData());
    while (const dirent *entry = stream ? ::readdir(stream) : nullptr) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..")
            entries.push_back({name, kindOfType(entry->d_type)});
        errno = 0;
    }
    *error = errno;
    if (stream)
        ::closedir(stream);
    return entries;
}

class Walk
{
public:
    explicit Walk(const FolderVisit &visit) : m_visit(visit) {}

    void enter(const QByteArray &folder)
    {
        struct stat info = {};
        if (::stat(folder.constData(), &info) != 0) {
            tellUnreadable(folder, errno);
            return;
        }
        const FolderId id{info.st_dev, info.st_ino};
        if (std::find(m_above.begin(), m_above.end(), id) != m_above.end())
            return;
        m_above.push_back(id);
        int error = 0;
        const std::vector<Entry> entries = entriesOf(folder, &error);
        if (error != 0)
            tellUnreadable(folder, error);
        for (const Entry &entry : entries) {
            if (m_visit.stopped && m_visit.stopped())
                break;
            take(folder == "/" ? folder + entry.name : folder + '/' + entry.name, entry.kind);
        }
        m_above.pop_back();
    }

private:
    void tellUnreadable(const QByteArray &folder, int error)
    {
        if (m_visit.unreadable)
            m_visit.unreadable(QFile::decodeName(folder), qt_error_string(error));
    }

    // What an entry without a kind of its own is: a link, or an entry of a file system that tells no kinds.
    Kind lookAt(const QByteArray &path) const
    {
        struct stat info = {};
        if (::stat(path.constData(), &info) != 0)
            return Kind::Unknown;
        if (!S_ISDIR(info.st_mode))
            return S_ISREG(info.st_mode) ? Kind::File : Kind::Unknown;
        const bool isLink = ::lstat(path.constData(), &info) == 0 && S_ISLNK(info.st_mode);
        return isLink && !m_visit.followsFolderLinks ? Kind::Unknown : Kind::Folder;
    }

    void take(const QByteArray &path, Kind kind)
    {
        if (kind == Kind::Unknown)
            kind = lookAt(path);
        const QString text = QFile::decodeName(path);
        if (kind == Kind::Unknown)
            return;
        if (text.contains(QChar::ReplacementCharacter) && QFile::encodeName(text) != path) {
            if (m_visit.oddName)
                m_visit.oddName(text, kind == Kind::Folder);
            return;
        }
        m_visit.entry(text, kind == Kind::Folder);
        if (kind == Kind::Folder)
            enter(path);
    }

    const FolderVisit &m_visit;
    std::vector<FolderId> m_above; ///< the folders on the way to the one that is read
};
} // namespace

bool walkFolder(const QString &folder, const FolderVisit &visit)
{
    if (folder.isEmpty() || !QDir(folder).exists())
        return false;
    Walk(visit).enter(QFile::encodeName(QDir::cleanPath(QDir(folder).absolutePath())));
    return true;
}
