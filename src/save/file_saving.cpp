#include "save/file_saving.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "platform/find_files.h"
#include "save/outlook_bundle.h"
#include "text/mailbox_paths.h"
#include "text/opera_location.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

namespace
{
const QString partialSuffix = QStringLiteral(".partial.emlx");
const QString emlxSuffix = QStringLiteral(".emlx");

// Where an .emlx message ends by the byte count in its first line, in bytes from the start of the file; -1 where that
// line is no count.
qint64 countedEnd(std::string_view lines)
{
    const std::string_view line = lines.substr(0, lines.find('\n'));
    bool isNumber = false;
    const qint64 count = QByteArray(line.data(), static_cast<int>(std::min<size_t>(line.size(), 64)))
                             .trimmed()
                             .toLongLong(&isNumber);
    const qint64 start = static_cast<qint64>(line.size()) + 1;
    return isNumber && count > 0 && count <= std::numeric_limits<qint64>::max() - start ? start + count : -1;
}
} // namespace

FileSaving::FileSaving(const Writer &writer, SaveMode mode)
    : m_writer(writer), m_text(writer.lines), m_mailbox(mode)
{
    if (mode == SaveMode::Write)
        prepareBundle(*writer.bundle);
}

bool FileSaving::save(ByteSource file)
{
    const QString path = file.path();
    beginMessage(path, file.size());
    if (isNewsFeed(path)) {
        leaveOut(LeftOutReason::NotTaken);
        return true;
    }
    if (!open(std::move(file))) {
        leaveOut(openFailure(), m_source.errorString());
        return false;
    }
    const QStringList parts = m_isPartial ? partsOf(path) : QStringList();
    if (m_flaw && m_flaw->reason == LeftOutReason::Stopped) {
        leaveOut(m_flaw->reason); // without its parts it would not be whole
        return true;
    }
    if (!parts.isEmpty() && !readPartial(parts)) {
        leaveOut(LeftOutReason::Part, m_source.errorString());
        return false;
    }
    ++noOfConvertedMessage;
    const bool known = listOfPathOfOnlyForTree.contains(path);
    if (known || &m_writer != &writeMail) // writeMail looks at the tree first
        FileSavingIdentification = true;
    if (known)
        write(path, !parts.isEmpty());
    else
        leaveOut(LeftOutReason::NotTaken);
    return true;
}

void FileSaving::write(const QString &path, bool hasParts)
{
    openMailbox(path);
    m_mailbox.append(m_writer.separator);
    m_mailbox.append('\n');
    if (hasParts)
        appendPartial();
    else
        readText([this](std::string_view text) {
            m_mailbox.append(text);
            m_emptyParts += m_isPartial ? partSections(text) : 0;
        });
    m_mailbox.append('\n');
    endMessage(hasParts ? m_partLines.count() : m_text.changes().fromLines);
}

void FileSaving::beginMessage(const QString &path, qint64 size)
{
    saveLedger.addFound();
    m_place = {path, 0};
    m_size = size;
    m_isPartial = &m_writer == &writeMail && path.contains(partialSuffix);
    m_countedEnd = 0;
    m_emptyParts = 0;
    m_partLines = FromLines();
    m_flaw.reset();
}

// The message won't be written, or has not been written whole.
void FileSaving::leaveOut(LeftOutReason reason, const QString &text) const
{
    saveLedger.addLeftOut({m_place.path, m_place.offset, 1, reason, text});
}

LeftOutReason FileSaving::openFailure() const
{
    return m_source.source().errorNumber() == ENOENT ? LeftOutReason::Vanished : LeftOutReason::Unreadable;
}

// The message stands in the mailbox, be it whole or not; so many of its lines start with "From ".
void FileSaving::endMessage(qint64 fromLines)
{
    if (m_countedEnd > m_size && !m_flaw) {
        m_flaw = {LeftOutReason::Unreadable,
                  Problem::tr("shorter than its first line says: ") + m_place.path};
        reportUnread(m_flaw->text);
    }
    m_batch.addStrays(fromLines, m_place);
    if (m_flaw) {
        m_batch.addStrays(1, m_place); // the separator
        leaveOut(m_flaw->reason, m_flaw->text);
    } else {
        m_batch.add(m_place);
        tellChanges(m_text.changes());
    }
    m_batch.settleMuch(&m_mailbox);
}

void FileSaving::tellChanges(const TextChanges &text)
{
    const bool emlx = m_place.path.endsWith(emlxSuffix);
    const bool ended = text.endedAt >= 0;
    const qint64 tail = emlx && ended ? std::max<qint64>(0, m_countedEnd - text.endedAt) : 0;
    m_batch.addChange(ChangeKind::LostCharacters, text.latin1.lost, m_place);
    m_batch.addChange(ChangeKind::Latin1, text.latin1.single, m_place);
    m_batch.addChange(ChangeKind::FirstLine, !emlx && text.lostFirstLine ? 1 : 0, m_place);
    m_batch.addChange(ChangeKind::Quoted, text.quoted, m_place);
    m_batch.addChange(ChangeKind::Tail, tail, m_place);
    m_batch.addChange(ChangeKind::DroppedHeader, text.droppedHeaders, m_place);
    m_batch.addChange(ChangeKind::EmptyParts, m_emptyParts, m_place);
    m_batch.addChange(ChangeKind::CutText, !emlx && ended ? 1 : 0, m_place);
}

bool FileSaving::open(ByteSource file)
{
    if (m_source.open(std::move(file)))
        return true;
    reportUnread(Problem::tr("the save ended at a file that can't be opened: ") + m_source.errorString());
    return false;
}

// Hands on the text of the message that is open, piece by piece.
template <typename Take>
void FileSaving::readText(Take take)
{
    m_text.start();
    for (std::string_view lines = m_source.readLines(); !lines.empty() && !m_text.hasEnded();
         lines = m_source.readLines()) {
        if (m_countedEnd == 0)
            m_countedEnd = m_place.path.endsWith(emlxSuffix) ? countedEnd(lines) : -1;
        take(m_text.take(lines));
    }
    checkRead(LeftOutReason::Unreadable);
}

void FileSaving::checkRead(LeftOutReason reason)
{
    if (m_source.errorString().isEmpty())
        return;
    reportUnread(Problem::tr("can't be read to its end: ") + m_source.errorString());
    if (!m_flaw)
        m_flaw = {reason, m_source.errorString()};
}

void FileSaving::openMailbox(const QString &path)
{
    // What names the mailbox is the file's folder, or in Opera Mail the message.
    const bool isOpera = m_writer.store == &bMbsFileFound;
    const QString folder = isOpera ? readFolder() : path.left(path.lastIndexOf(QLatin1Char('/')));
    if (folder != m_folder || m_target.isEmpty())
        m_target = m_writer.target(isOpera ? folder : path, m_selectedFile, saveDir).file;
    m_folder = folder;
    if (m_mailbox.isOpen() && m_mailbox.path() == m_target)
        return;
    closeMailbox();
    m_mailbox.open(m_target, *m_writer.codes);
}

void FileSaving::closeMailbox()
{
    m_batch.settle(&m_mailbox);
    m_mailbox.close();
    saveLedger.addBytes(m_mailbox.takeAddedBytes());
}

QString FileSaving::accountOf(const QString &path)
{
    if (!m_accounts) {
        QString error;
        const auto found = findFiles(
            m_selectedFile, QStringLiteral("accounts.ini"), QStringLiteral("/var/tmp/VelmoraKestrinINI"),
            [] { return true; }, &error);
        if (!found)
            reportUnread(Problem::tr("the account names can't be searched for: ") + error);
        m_accounts.emplace(found && !found->isEmpty() ? found->last() : QString(), saveAccounts);
        reportUnread(m_accounts->errorString());
    }
    return m_accounts->nameOf(operaAccountOf(path));
}

// The folder of the open Opera Mail message: "/account/folder".
QString FileSaving::readFolder()
{
    QString folder;
    for (std::string_view lines = m_source.readLines(); !lines.empty(); lines = m_source.readLines())
        takeOperaFolderBehind(lines, &folder);
    m_source.seek(0);
    if (folder.isNull())
        folder = QStringLiteral("Mails");
    return (QLatin1Char('/') + accountOf(m_place.path) + QLatin1Char('/') + folder).trimmed();
}

// The parts of a partial message, in the order in which they go into it. The store is searched for parts when the
// first such message comes.
QStringList FileSaving::partsOf(const QString &path)
{
    if (!m_partIndex) {
        QString error;
        const auto found = findFiles(
            m_selectedFile, QStringLiteral("*.emlxpart"), QStringLiteral("/var/tmp/VelmoraKestrinEmlxPart"),
            [] { return !bStopFlag; }, &error);
        if (!found && bStopFlag) {
            m_flaw = {LeftOutReason::Stopped, QString()};
            return {};
        }
        if (!found) {
            m_flaw = {LeftOutReason::Part, Problem::tr("the parts can't be searched for: ") + error};
            reportUnread(m_flaw->text);
            return {};
        }
        m_partIndex.emplace(*found);
    }
    QStringList parts = m_partIndex->takeParts(path);
    if (parts.isEmpty() || m_source.size() <= m_largestPartial)
        return parts;
    m_flaw = {LeftOutReason::TooLarge, Problem::tr("saved without its parts, it is too large: ") + path};
    reportUnread(m_flaw->text);
    return {};
}

// Reads the open partial message and sees to it that each part it takes can be opened.
bool FileSaving::readPartial(const QStringList &parts)
{
    m_partial.clear();
    readText([this](std::string_view text) { m_partial.insert(m_partial.end(), text.begin(), text.end()); });
    m_places = partPlaces({m_partial.data(), m_partial.size()});
    m_parts = parts.mid(0, static_cast<int>(m_places.size()));
    return std::all_of(m_parts.cbegin(), m_parts.cend(),
                       [this](const QString &part) { return open(ByteSource::ofFile(part)); });
}

void FileSaving::appendPartial()
{
    const std::string_view text(m_partial.data(), m_partial.size());
    size_t written = 0;
    std::vector<char> content;
    m_emptyParts = static_cast<qint64>(m_places.size());
    const auto append = [this](std::string_view bytes) {
        m_mailbox.append(bytes);
        m_partLines.take(bytes);
    };
    for (int i = 0; i < m_parts.size(); ++i) {
        const qint64 place = m_places[static_cast<size_t>(i)];
        if (place < 0) {
            reportProblem(Problem::tr("left out, its message has no place for it: ") + m_parts.at(i));
            continue;
        }
        append(text.substr(written, static_cast<size_t>(place) - written));
        written = static_cast<size_t>(place);
        if (!open(ByteSource::ofFile(m_parts.at(i)))) {
            checkRead(LeftOutReason::Part);
            continue;
        }
        for (std::string_view lines = m_source.readLines(); !lines.empty(); lines = m_source.readLines()) {
            content.clear();
            appendPartLines(lines, &content);
            append({content.data(), content.size()});
        }
        checkRead(LeftOutReason::Part);
        --m_emptyParts;
    }
    append(text.substr(written));
}
