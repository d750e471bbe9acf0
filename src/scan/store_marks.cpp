#include "scan/store_marks.h"

#include "platform/byte_source.h"

#include <QFile>

#include <algorithm>
#include <cctype>

namespace
{
constexpr qint64 compatibilityBytes = 4096;
constexpr int levelsThatName = 3; // "Thunderbird/Profiles/abcd.default"

struct ClientName {
    const char *name; ///< part of a folder's name, in lower case
    int client;
};

constexpr ClientName profileNames[] = {{"thunderbird", 3}, {"icedove", 3}, {"postbox", 4},
                                       {"seamonkey", 7},   {"eudora", 6},  {"penelope", 6}};

bool has(const std::vector<QByteArray> &names, const char *name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

// A folder's name, or that of the one so many levels above it; "" above the top.
QByteArray nameOf(const QByteArray &folder, int levelsUp = 0)
{
    const QList<QByteArray> names = folder.split('/');
    return levelsUp < names.size() ? names.at(names.size() - 1 - levelsUp) : QByteArray();
}

// The client that the last folders of a path name, the innermost first; 0 for none.
int clientNamedIn(const QByteArray &path, int levels)
{
    for (int level = 0; level < levels; ++level) {
        const QByteArray name = nameOf(path, level).toLower();
        for (const ClientName &row : profileNames)
            if (name.contains(row.name))
                return row.client;
    }
    return 0;
}

// The program's folder, which a profile names in a line such as "LastPlatformDir=/usr/lib/thunderbird".
int clientOfCompatibility(const QByteArray &profile)
{
    ByteSource source = ByteSource::ofFile(QFile::decodeName(profile + "/compatibility.ini"));
    QByteArray text(static_cast<int>(compatibilityBytes), '\0');
    text.truncate(static_cast<int>(source.read(0, text.data(), text.size())));
    for (const QByteArray &line : text.split('\n'))
        if (line.startsWith("LastPlatformDir=") || line.startsWith("LastAppDir="))
            if (const int client = clientNamedIn(line.trimmed(), line.count('/') + 1))
                return client;
    return 0;
}

// Where nothing tells, it is taken for Thunderbird's: all of them are read alike.
int clientOfProfile(const QByteArray &profile)
{
    if (const int client = clientOfCompatibility(profile))
        return client;
    const int client = clientNamedIn(profile, profile.count('/'));
    return client > 0 ? client : 3;
}

bool holdsAccounts(const FolderNames &names)
{
    return std::any_of(names.folders.begin(), names.folders.end(), [](const QByteArray &name) {
        return name.startsWith("account") && name.size() > 7 &&
               std::isdigit(static_cast<unsigned char>(name.at(7)));
    });
}

bool isAppleLibrary(const QByteArray &folder, const FolderNames &names)
{
    return folder.endsWith("/Library/Mail") || has(names.files, "Envelope Index") ||
           has(names.folders, "MailData");
}

// By the folder's name alone, as for a copy without the client's own files.
StoreMark markOfName(const QByteArray &folder, bool holdsMail)
{
    const QByteArray name = nameOf(folder).toLower();
    const int client = clientNamedIn(folder, levelsThatName);
    if (holdsMail && client > 0)
        return {{MailKind::Mailbox}, client, 0, false};
    if (name == "eudora" || name == "eudora folder")
        return {{MailKind::Mailbox}, client, 0, false};
    if (name.contains("outspring"))
        return {{MailKind::Outspring}, 0, 0, false};
    if (name == "mailmate")
        return {{MailKind::MailMate}, 0, 0, false};
    return {};
}
} // namespace

StoreMark markOfStore(const QByteArray &folder, const FolderNames &names)
{
    const bool holdsMail = has(names.folders, "Mail") || has(names.folders, "ImapMail");
    if (holdsMail && has(names.files, "prefs.js"))
        return {{MailKind::Mailbox}, clientOfProfile(folder), 0, true};
    if (nameOf(folder) == "store" && holdsAccounts(names))
        return {{MailKind::Opera}, 0, 1, true};
    if (nameOf(folder) == "IMAP" && nameOf(folder, 1) == "Messages")
        return {{MailKind::MailMate}, 0, 2, true};
    if (isAppleLibrary(folder, names))
        return {{MailKind::Emlx, MailKind::AppleMbox}, 0, 0, true};
    return markOfName(folder, holdsMail);
}

bool isInAppleMailbox(const QByteArray &folder)
{
    const QByteArray path = folder + '/';
    return path.contains(".mbox/") || path.contains(".imapmbox/");
}

bool isInMailMateMailbox(const QByteArray &folder)
{
    return folder.contains(".mailbox");
}

std::optional<MailKind> kindOfMessageFile(const QByteArray &folder, const QByteArray &name)
{
    if (name.endsWith(".emlx"))
        return MailKind::Emlx;
    if (name.endsWith(".mbs"))
        return MailKind::Opera;
    if (name.endsWith(".eml") && isInMailMateMailbox(folder))
        return MailKind::MailMate;
    if (name.endsWith(".eml") && !isInAppleMailbox(folder))
        return MailKind::Outspring;
    return std::nullopt;
}

bool mayHoldMail(const QByteArray &name)
{
    return name == "mbox" || name.endsWith(".eml") || name.endsWith(".emlx") || name.endsWith(".mbs") ||
           name.endsWith(".olm");
}
