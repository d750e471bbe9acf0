#include "platform/user_name.h"

#include <QFile>

#include <vector>

#include <pwd.h>
#include <unistd.h>

QString loginName()
{
    constexpr size_t entryBytes = 16384; // more than any entry of a user database takes
    std::vector<char> room(entryBytes);
    passwd entry = {};
    passwd *found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, room.data(), room.size(), &found) != 0 || !found)
        return QString();
    return QFile::decodeName(found->pw_name);
}
