#include "platform/folder_names.h"

#include <QFile>

#include <cerrno>

#include <dirent.h>
#include <sys/stat.h>

namespace
{
void addEntry(const QByteArray &folder, const dirent &entry, FolderNames *names)
{
    const QByteArray name(entry.d_name);
    if (name == "." || name == "..")
        return;
    mode_t mode = entry.d_type == DT_DIR ? S_IFDIR : entry.d_type == DT_REG ? S_IFREG : 0;
    struct stat info = {};
    if (entry.d_type == DT_UNKNOWN && ::lstat(pathBelow(folder, name).constData(), &info) == 0)
        mode = info.st_mode;
    if (S_ISDIR(mode))
        names->folders.push_back(name);
    else if (S_ISREG(mode))
        names->files.push_back(name);
}
} // namespace

bool readFolder(const QByteArray &folder, FolderNames *names)
{
    DIR *stream = ::opendir(folder.constData());
    if (!stream)
        return false;
    errno = 0;
    while (const dirent *entry = ::readdir(stream)) {
        addEntry(folder, *entry, names);
        errno = 0;
    }
    const int number = errno;
    ::closedir(stream);
    errno = number;
    return number == 0;
}

QByteArray pathBelow(const QByteArray &folder, const QByteArray &name)
{
    return folder == "/" ? folder + name : folder + '/' + name;
}

bool isUtf8(const QByteArray &name)
{
    return QFile::encodeName(QFile::decodeName(name)) == name;
}
