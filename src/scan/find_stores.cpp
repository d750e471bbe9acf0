#include "scan/find_stores.h"

#include "platform/byte_source.h"
#include "platform/folder_names.h"
#include "scan/store_marks.h"
#include "text/mailbox_paths.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>

#include <sys/stat.h>

namespace
{
constexpr int olmClient = 5;
// In the order of MailKind; the client of a mailbox stands in the mark.
constexpr int clientOfKind[] = {1, 2, 8, 9, 10, 0};
static_assert(std::size(clientOfKind) == mailKinds);

struct Tally {
    qint64 files = 0;
    qint64 bytes = 0;

    void add(const Tally &other)
    {
        files += other.files;
        bytes += other.bytes;
    }
};

using KindTallies = std::array<Tally, mailKinds>;

/// A store that a mark tells of, while it is gone through.
struct Region {
    StoreMark mark;
    QByteArray root;
    KindTallies tallies;
};

/// Message files without a mark: the store is the folder where they end.
struct Claim {
    MailKind kind;
    QByteArray root;
    Tally tally;
};

/// What a folder leaves to the one above it.
struct Rest {
    std::vector<Claim> claims;
    bool other = false; ///< there are files of other kinds
};

/// A folder on the way down.
struct Place {
    QByteArray path;
    int region; ///< the mark at or above it, as an index; -1: none
};

qint64 sizeOf(const QByteArray &path)
{
    struct stat info = {};
    return ::lstat(path.constData(), &info) == 0 ? info.st_size : 0;
}

bool isBefore(const FoundStore &one, const FoundStore &other)
{
    const QString path = one.path + QLatin1Char('/'); // so that a folder is followed by what lies in it
    const QString otherPath = other.path + QLatin1Char('/');
    return path == otherPath ? one.client < other.client : path < otherPath;
}

bool liesIn(const QString &path, const QString &folder)
{
    return path == folder ||
           path.startsWith(folder == QLatin1String("/") ? folder : folder + QLatin1Char('/'));
}

class StoreWalk
{
public:
    explicit StoreWalk(const std::function<bool()> &stopped) : m_stopped(stopped) {}

    void lookAt(const QString &path);
    FoundStores takeFound();

private:
    Rest enter(Place place);
    void mark(Place *place, const FolderNames &names);
    bool takes(const Place &place, MailKind kind) const;
    bool isInCertainStore(const Place &place) const;
    std::optional<MailKind> kindOf(const Place &place, const QByteArray &name);
    bool takeFile(const Place &place, const QByteArray &name, KindTallies *own);
    Rest takeFiles(const Place &place, const FolderNames &names);
    Rest passUp(const Place &place, const Rest &rest);
    void addClaims(const std::vector<Claim> &claims);
    bool beginsWith(const QByteArray &path, const char *bytes);
    void addStore(int client, const QByteArray &root, const Tally &tally);
    void fail(const QByteArray &path, const QString &reason);

    const std::function<bool()> &m_stopped;
    std::vector<Region> m_regions;
    FoundStores m_found;
};

void StoreWalk::fail(const QByteArray &path, const QString &reason)
{
    m_found.problems.append(
        QStringLiteral("can't be searched for mail: %1: %2").arg(QFile::decodeName(path), reason));
}

void StoreWalk::addStore(int client, const QByteArray &root, const Tally &tally)
{
    m_found.stores.push_back({client, QFile::decodeName(root), tally.files, tally.bytes});
}

bool StoreWalk::beginsWith(const QByteArray &path, const char *bytes)
{
    constexpr int orderMarkBytes = 3;
    const int length = static_cast<int>(qstrlen(bytes));
    char start[16];
    ByteSource source = ByteSource::ofFile(QFile::decodeName(path), sizeof start);
    const qint64 got = source.read(0, start, std::min<qint64>(sizeof start, source.size()));
    if (!source.errorString().isEmpty())
        m_found.problems.append(QStringLiteral("can't be searched for mail: ") + source.errorString());
    QByteArray text = QByteArray::fromRawData(start, static_cast<int>(got));
    if (text.startsWith("\xEF\xBB\xBF"))
        text = text.mid(orderMarkBytes);
    return text.left(length) == bytes;
}

void StoreWalk::mark(Place *place, const FolderNames &names)
{
    if (isInCertainStore(*place) || isInAppleMailbox(place->path) || isInMailMateMailbox(place->path))
        return;
    StoreMark found = markOfStore(place->path, names);
    if (found.kinds.empty() || (place->region >= 0 && !found.certain))
        return;
    QByteArray root = place->path;
    for (int level = 0; level < found.levelsUp; ++level)
        root.truncate(root.lastIndexOf('/'));
    place->region = static_cast<int>(m_regions.size());
    m_regions.push_back({std::move(found), root, {}});
}

bool StoreWalk::isInCertainStore(const Place &place) const
{
    return place.region >= 0 && m_regions[static_cast<size_t>(place.region)].mark.certain;
}

bool StoreWalk::takes(const Place &place, MailKind kind) const
{
    if (place.region < 0)
        return false;
    const std::vector<MailKind> &kinds = m_regions[static_cast<size_t>(place.region)].mark.kinds;
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

// Opens a file only where its place tells that it may be a mailbox.
std::optional<MailKind> StoreWalk::kindOf(const Place &place, const QByteArray &name)
{
    const QByteArray path = pathBelow(place.path, name);
    const bool inProfile = takes(place, MailKind::Mailbox);
    const bool exported = name == "mbox" && place.path.endsWith(".mbox");
    if ((inProfile || exported) && mayBeMailbox(QFile::decodeName(path)) && beginsWith(path, "From "))
        return inProfile ? MailKind::Mailbox : MailKind::AppleMbox;
    return kindOfMessageFile(place.path, name);
}

// Counts a file to the store that it lies in, or to those of its folder; false for a file without mail.
bool StoreWalk::takeFile(const Place &place, const QByteArray &name, KindTallies *own)
{
    if ((!mayHoldMail(name) && !takes(place, MailKind::Mailbox)) || !isUtf8(name))
        return false;
    const QByteArray path = pathBelow(place.path, name);
    const std::optional<MailKind> kind = kindOf(place, name);
    if (!kind) {
        if (name.endsWith(".olm") && !isInAppleMailbox(place.path) && beginsWith(path, "PK"))
            addStore(olmClient, path, {1, sizeOf(path)});
        return false;
    }
    KindTallies &tallies = takes(place, *kind) ? m_regions[static_cast<size_t>(place.region)].tallies : *own;
    tallies[static_cast<size_t>(*kind)].add({1, sizeOf(path)});
    return true;
}

// What a folder's own files claim; below a certain mark nothing is claimed.
Rest StoreWalk::takeFiles(const Place &place, const FolderNames &names)
{
    KindTallies own;
    qint64 others = 0;
    bool sureOutspring = false;
    for (const QByteArray &name : names.files) {
        if (takeFile(place, name, &own))
            sureOutspring = sureOutspring || name.endsWith(".f.eml");
        else if (!name.startsWith('.'))
            ++others;
    }
    if (isInCertainStore(place))
        return {{}, true};
    Tally &loose = own[static_cast<size_t>(MailKind::Outspring)];
    if (others >= loose.files && !sureOutspring)
        loose = {}; // a message that was kept among other files is no store
    Rest rest{{}, others > 0};
    for (int i = 0; i < mailKinds; ++i)
        if (own[static_cast<size_t>(i)].files > 0)
            rest.claims.push_back({static_cast<MailKind>(i), place.path, own[static_cast<size_t>(i)]});
    return rest;
}

// The claims of each kind as one: of a mailbox, or of a folder with several.
std::vector<Claim> merged(const std::vector<Claim> &claims, const QByteArray &folder, bool isMailbox)
{
    std::vector<Claim> result;
    for (const Claim &claim : claims) {
        const auto same = std::find_if(result.begin(), result.end(),
                                       [&](const Claim &other) { return other.kind == claim.kind; });
        if (same == result.end()) {
            result.push_back(claim);
            if (isMailbox)
                result.back().root = folder;
        } else {
            same->tally.add(claim.tally);
            same->root = folder;
        }
    }
    return result;
}

// What the folder above gets to know. Claims end where there is other mail, or another file.
Rest StoreWalk::passUp(const Place &place, const Rest &rest)
{
    const bool isMailbox = isInAppleMailbox(place.path) || isInMailMateMailbox(place.path);
    const bool oneKind = std::all_of(rest.claims.begin(), rest.claims.end(), [&](const Claim &claim) {
        return claim.kind == rest.claims.front().kind;
    });
    if (isMailbox || (oneKind && !rest.other && place.region < 0))
        return {merged(rest.claims, place.path, isMailbox), false};
    addClaims(rest.claims);
    return {{}, true};
}

// Looks at a folder and all below; gives the claims that the folder above decides on.
Rest StoreWalk::enter(Place place)
{
    if (m_stopped && m_stopped())
        return {};
    FolderNames names;
    if (!isUtf8(place.path) || !readFolder(place.path, &names)) {
        fail(place.path,
             isUtf8(place.path) ? qt_error_string(errno) : QStringLiteral("its name is no UTF-8"));
        return {{}, true};
    }
    mark(&place, names);
    Rest rest = takeFiles(place, names);
    for (const QByteArray &name : names.folders) {
        const Rest of = enter({pathBelow(place.path, name), place.region});
        rest.claims.insert(rest.claims.end(), of.claims.begin(), of.claims.end());
        rest.other = rest.other || of.other;
    }
    return passUp(place, rest);
}

void StoreWalk::lookAt(const QString &path)
{
    const QByteArray bytes = QFile::encodeName(path);
    const QFileInfo info(path);
    if (info.isDir())
        addClaims(enter({bytes, -1}).claims);
    else if (info.isFile() && path.endsWith(QLatin1String(".olm")) && beginsWith(bytes, "PK"))
        addStore(olmClient, bytes, {1, info.size()});
    else
        fail(bytes, info.exists() ? QStringLiteral("it is no folder") : QStringLiteral("no such folder"));
}

// A store in another one of the same client is a part of it.
FoundStores StoreWalk::takeFound()
{
    for (const Region &region : m_regions)
        for (const MailKind kind : region.mark.kinds) {
            const Tally &tally = region.tallies[static_cast<size_t>(kind)];
            const int client = clientOfKind[static_cast<size_t>(kind)];
            if (tally.files > 0)
                addStore(client > 0 ? client : region.mark.client, region.root, tally);
        }
    std::sort(m_found.stores.begin(), m_found.stores.end(), isBefore);
    std::vector<FoundStore> kept;
    QHash<int, size_t> last; // of each client
    for (const FoundStore &store : m_found.stores) {
        const auto outer = last.constFind(store.client);
        if (outer == last.constEnd() || !liesIn(store.path, kept[*outer].path)) {
            last.insert(store.client, kept.size());
            kept.push_back(store);
        } else {
            kept[*outer].files += store.files;
            kept[*outer].bytes += store.bytes;
        }
    }
    m_found.stores = std::move(kept);
    return std::move(m_found);
}

void StoreWalk::addClaims(const std::vector<Claim> &claims)
{
    for (const Claim &claim : claims)
        addStore(clientOfKind[static_cast<size_t>(claim.kind)], claim.root, claim.tally);
}
} // namespace

FoundStores findStores(const QStringList &folders, const std::function<bool()> &stopped)
{
    StoreWalk walk(stopped);
    QStringList real; // links resolved; "" for what is not there
    for (const QString &folder : folders)
        real.append(QFileInfo(folder).canonicalFilePath());
    for (int i = 0; i < folders.size(); ++i) {
        bool isInOther = false;
        for (int j = 0; j < folders.size() && !real.at(i).isEmpty(); ++j)
            isInOther = isInOther || (!real.at(j).isEmpty() && liesIn(real.at(i), real.at(j)) &&
                                      (real.at(i) != real.at(j) || j < i));
        if (!isInOther)
            walk.lookAt(folders.at(i));
    }
    return walk.takeFound();
}

const FoundStore *largestStore(const FoundStores &found)
{
    const auto largest = std::max_element(
        found.stores.begin(), found.stores.end(),
        [](const FoundStore &one, const FoundStore &other) { return one.bytes < other.bytes; });
    return largest == found.stores.end() ? nullptr : &*largest;
}
