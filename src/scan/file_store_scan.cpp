#include "scan/file_store_scan.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "platform/find_files.h"
#include "platform/folder_walk.h"
#include "scan/folder_ids.h"
#include "scan/store_kinds.h"
#include "text/line_reader.h"
#include "text/mailbox_paths.h"
#include "text/message_text.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr size_t partialBlockBytes =
    16 * 1024; // what belongs to a partial message's attachments is not in it

bool isMessageFile(const QString &path)
{
    return path.endsWith(QLatin1String(".eml")) || path.endsWith(QLatin1String(".emlx"));
}

// A name with a line feed is not found by the search either.
void recordFile(const QString &path)
{
    if (!isMessageFile(path) || path.contains(QLatin1Char('\n')) || listOfPathOfOnlyForTree.contains(path))
        return;
    listOfPathOfOnlyForTree.append(path);
    appendMailItem(path, llParentIdRunning);
}

// Records the message files below a directory with the folder entered last.
void OnGetAllFileAndDirforsaving(const QString &folder)
{
    const auto take = [](const QString &path, bool isFolder) {
        if (!isFolder)
            recordFile(path);
    };
    const bool found = walkFolder(folder, {take});
    if (found)
        bCheckFucntion = true;
}

bool passes(const QString &path, StoreTest test)
{
    return test == StoreTest::None ||
           path.contains(QLatin1String(".mailbox")) == (test == StoreTest::NeedsMailbox);
}

// Where its owner and mode tell that a file can be opened, it need not be: that spares a fifth of a scan's processor time.
bool isOwnReadableFile(const QString &path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 && S_ISREG(info.st_mode) &&
           info.st_uid == ::geteuid() && (info.st_mode & S_IRUSR) != 0;
}

bool canBeRead(const QString &path)
{
    if (isOwnReadableFile(path))
        return true;
    const ByteSource file = ByteSource::ofFile(path);
    if (!file.isOpen())
        reportUnreadable(path, file.errorString());
    return file.isOpen();
}

// How many parts a partial message has a place for.
int sectionsOf(const QString &path)
{
    LineReader reader(LineReader::Mode::Bytes);
    reader.setBlockBytes(partialBlockBytes);
    MessageText text(LineRule::Filtered);
    text.start();
    size_t sections = 0;
    if (reader.open(path))
        for (std::string_view lines = reader.readLines(); !lines.empty() && !text.hasEnded();
             lines = reader.readLines())
            sections += partPlaces(text.take(lines)).size();
    return static_cast<int>(std::min<size_t>(sections, std::numeric_limits<int>::max()));
}
} // namespace

std::optional<QStringList> findInStore(const char *pattern, const char *listFile)
{
    if (!QFileInfo::exists(m_selectedFile))
        return QStringList(); // a store that is not there holds nothing; what find says of it is no path
    QString error;
    std::optional<QStringList> found = findFiles(
        m_selectedFile, QLatin1String(pattern), QLatin1String(listFile), [] { return !bStopFlag; }, &error);
    if (!found && !bStopFlag)
        reportUnread(Problem::tr("can't be searched: %1: %2").arg(m_selectedFile, error));
    return found;
}

void reportUnreadable(const QString &path, const QString &error)
{
    if (path.startsWith(QLatin1Char('/')))
        reportUnread(Problem::tr("the scan ended at a file that can't be opened: ") + error);
    else
        reportUnread(Problem::tr("the scan ended, the search of the store met an error: ") + path);
}

void TreePaths::enter(const QString &tree, const std::function<void()> &create)
{
    const auto known = m_ids.constFind(tree);
    if (known == m_ids.constEnd()) {
        create();
        m_ids.insert(tree, llParentIdRunning);
    } else {
        llParentIdRunning = *known;
    }
}

bool FileStoreScan::find()
{
    m_store.found->clear();
    const std::optional<QStringList> messages = findInStore(m_store.pattern, m_store.listFile);
    if (!messages)
        return false;
    *m_store.found = *messages;
    if (!m_store.partPattern)
        return true;
    const std::optional<QStringList> parts =
        findInStore(m_store.partPattern, "/var/tmp/VelmoraKestrinEmlxPart");
    if (!parts)
        return false;
    m_parts = PartIndex(*parts);
    return true;
}

// Only the parts for which the message has a section are used.
bool FileStoreScan::canPartsBeRead(const QString &path)
{
    const QStringList parts = m_parts.takeParts(path);
    const QStringList used = parts.mid(0, parts.isEmpty() ? 0 : sectionsOf(path));
    for (const QString &part : used)
        m_usedParts.insert(part);
    return std::all_of(used.cbegin(), used.cend(), canBeRead);
}

FileStep FileStoreScan::take(const QString &path)
{
    if (!passes(path, m_store.test))
        return FileStep::WrongStore;
    if (isNewsFeed(path))
        return FileStep::Taken;
    if (!canBeRead(path))
        return FileStep::Unreadable;
    if (m_store.partPattern && path.contains(QLatin1String(".partial.emlx")) && !canPartsBeRead(path))
        return FileStep::Unreadable;

    const FilePlace place = m_store.tree(path, m_selectedFile);
    if (!place.tree.isEmpty()) {
        bCheckFucntion = listOfPathOfOnlyForTree.contains(path);
        m_trees.enter(place.tree, [&] { treeCreator(place.tree, path); });
        if (!bCheckFucntion && !m_walked.contains(place.folder)) {
            m_walked.insert(place.folder);
            OnGetAllFileAndDirforsaving(place.folder);
        }
    }
    ++noOfConvertedMessage;
    return FileStep::Taken;
}
