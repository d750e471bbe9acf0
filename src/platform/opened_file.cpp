#include "platform/opened_file.h"

#include <QFile>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

OpenedFile openFile(const QString &path, size_t startBytes)
{
    OpenedFile file;
    file.path = path;
    // A pipe without a writer must not hold the program up.
    file.handle = FileHandle(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat info = {};
    const bool opened = file.handle.isOpen() && ::fstat(file.handle.descriptor(), &info) == 0;
    if (!opened || !S_ISREG(info.st_mode)) {
        file.error = path + QStringLiteral(": ") +
                     (opened ? QStringLiteral("not a regular file") : qt_error_string(errno));
        file.handle.close();
        return file;
    }
    file.size = info.st_size;
    const size_t wanted = std::min(startBytes, static_cast<size_t>(file.size));
    if (wanted == 0)
        return file;
    file.start.reset(new char[wanted]); // not cleared as a vector's bytes are
    const ssize_t got = readAt(file.handle.descriptor(), file.start.get(), wanted, 0);
    file.startBytes = got > 0 ? static_cast<size_t>(got) : 0;
    if (got == file.size)
        file.handle.close();
    return file;
}
