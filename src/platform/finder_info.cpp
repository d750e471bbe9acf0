#include "platform/finder_info.h"

#include <QFile>

#include <cstring>

#include <sys/xattr.h>

namespace
{
constexpr size_t finderInfoBytes = 32;
}

void setFinderInfo(const QString &path, const FinderCodes &codes)
{
    char info[finderInfoBytes] = {};
    std::memcpy(info, codes.type, sizeof codes.type);
    std::memcpy(info + sizeof codes.type, codes.creator, sizeof codes.creator);
    const QByteArray name = QFile::encodeName(path);
#ifdef __APPLE__
    ::setxattr(name.constData(), "com.apple.FinderInfo", info, sizeof info, 0, 0);
#else
    // A file system without extended attributes refuses; the mailbox is complete without them.
    const int refused = ::setxattr(name.constData(), "user.com.apple.FinderInfo", info, sizeof info, 0);
    Q_UNUSED(refused)
#endif
}
