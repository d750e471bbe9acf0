#include "save/file_saving.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "platform/find_files.h"
#include "save/opera_target.h"
#include "save/outlook_bundle.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr char outlookBundle[] = "/Main Identity.rge";
constexpr char appleBundle[] = "/Main Identity.mbox";
constexpr char bareFrom[] = "From ???@???";
constexpr char datedFrom[] = "From - Wed Nov 12 14:38:04 2014";

const QString newsFolder = QStringLiteral("/RSS/Apple Hot News.rssmbox/");
const QString partialSuffix = QStringLiteral(".partial.emlx");

// A partial message is put together in memory; one beyond any that exists is not.
constexpr qint64 largestPartial = qint64(1) << 30;
} // namespace

// clang-format off
//                                       bundle         codes           separator                                lines                      target                 lays out  parts  known  silent
const FileSaveRow appleMailSave        {outlookBundle, outlookMailbox, "From - &&&&&@@@####",                   LineRule::Filtered,        &emlxToOutlook,        true,  true,  true,  true };
const FileSaveRow mailMateOutlookSave  {outlookBundle, outlookMailbox, bareFrom,                                LineRule::Stay,            &mailMateToOutlook,    true,  false, false, false};
const FileSaveRow mailMateAppleSave    {appleBundle,   appleMailbox,   datedFrom,                               LineRule::Stay,            &mailMateToAppleMail,  false, false, false, false};
const FileSaveRow outspringOutlookSave {outlookBundle, outlookMailbox, bareFrom,                                LineRule::Filtered,        &outspringToOutlook,   true,  false, false, false};
const FileSaveRow outspringAppleSave   {appleBundle,   appleMailbox,   datedFrom,                               LineRule::Filtered,        &outspringToAppleMail, false, false, false, false};
const FileSaveRow operaOutlookSave     {outlookBundle, outlookMailbox, "From ???@??? Fri Dec 19 10:37:38 2014", LineRule::FromColonQuoted, nullptr,               true,  false, false, false};
const FileSaveRow operaAppleSave       {appleBundle,   appleMailbox,   datedFrom,                               LineRule::Stay,            nullptr,               false, false, false, false};
// clang-format on

FileSaving::FileSaving(const FileSaveRow &row)
    : m_row(row), m_bundle(saveDir + QLatin1String(row.bundle)), m_text(row.lines)
{
    if (row.laysOutBundle)
        prepareOutlookBundle(m_bundle);
}

bool FileSaving::save(ByteSource file)
{
    const QString path = file.path();
    if (path.contains(newsFolder))
        return true;
    if (!open(std::move(file)))
        return false;
    const bool partial = m_row.joinsParts && path.contains(partialSuffix);
    const QStringList parts = partial ? partsOf(path) : QStringList();
    if (!parts.isEmpty() && !readPartial(parts))
        return false;
    ++noOfConvertedMessage;
    const bool known = listOfPathOfOnlyForTree.contains(path);
    if (known || !m_row.countsKnownOnly)
        FileSavingIdentification = true;
    if (!known)
        return true;

    openMailbox(path);
    m_mailbox.append(m_row.separator);
    m_mailbox.append('\n');
    if (parts.isEmpty())
        readText([this](std::string_view text) { m_mailbox.append(text); });
    else
        appendPartial();
    m_mailbox.append('\n');
    return true;
}

bool FileSaving::open(ByteSource file)
{
    if (m_source.open(std::move(file)))
        return true;
    reportUnread(QStringLiteral("the save ended at a file that can't be opened: ") + m_source.errorString());
    return false;
}

// Hands on the text of the message that is open, piece by piece.
template <typename Take>
void FileSaving::readText(Take take)
{
    m_text.start();
    for (std::string_view lines = m_source.readLines(); !lines.empty() && !m_text.hasEnded();
         lines = m_source.readLines())
        take(m_text.take(lines));
    reportReadError();
}

void FileSaving::reportReadError() const
{
    if (!m_source.errorString().isEmpty())
        reportUnread(QStringLiteral("can't be read to its end: ") + m_source.errorString());
}

void FileSaving::openMailbox(const QString &path)
{
    if (m_row.target) {
        const QString stem = mailboxStem(*m_row.target, path);
        if (stem != m_stem || m_target.file.isEmpty())
            m_target = targetOfStem(*m_row.target, stem, m_selectedFile, saveDir);
        m_stem = stem;
    } else {
        m_target = operaTarget(accountOf(path), readLocation(), m_bundle);
    }
    if (!m_mailbox.isOpen() || m_mailbox.path() != m_target.file)
        m_mailbox.open(m_target.file, m_row.codes);
}

QString FileSaving::accountOf(const QString &path)
{
    if (!m_accounts) {
        const auto found = findFiles(m_selectedFile, QStringLiteral("accounts.ini"),
                                     QStringLiteral("/var/tmp/VelmoraKestrinINI"));
        m_accounts.emplace(found && !found->isEmpty() ? found->last() : QString(), saveAccounts);
    }
    return m_accounts->nameOf(operaAccountOf(path));
}

// The folder that the open message names.
QString FileSaving::readLocation()
{
    QString location;
    for (std::string_view lines = m_source.readLines(); !lines.empty(); lines = m_source.readLines())
        takeOperaLocation(lines, &location);
    m_source.seek(0);
    return location;
}

// The parts of a partial message, in the order in which they go into it. The store is searched for parts when the
// first such message comes.
QStringList FileSaving::partsOf(const QString &path)
{
    if (!m_partIndex)
        m_partIndex.emplace(findFiles(m_selectedFile, QStringLiteral("*.emlxpart"),
                                      QStringLiteral("/var/tmp/VelmoraKestrinEmlxPart"))
                                .value_or(QStringList()));
    QStringList parts = m_partIndex->takeParts(path);
    if (parts.isEmpty() || m_source.size() <= largestPartial)
        return parts;
    reportUnread(QStringLiteral("saved without its parts, it is too large: ") + path);
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
    for (int i = 0; i < m_parts.size(); ++i) {
        const qint64 place = m_places[static_cast<size_t>(i)];
        if (place < 0) {
            reportProblem(QStringLiteral("left out, its message has no place for it: ") + m_parts.at(i));
            continue;
        }
        m_mailbox.append(text.substr(written, static_cast<size_t>(place) - written));
        written = static_cast<size_t>(place);
        if (!open(ByteSource::ofFile(m_parts.at(i))))
            continue;
        for (std::string_view lines = m_source.readLines(); !lines.empty(); lines = m_source.readLines()) {
            content.clear();
            appendPartLines(lines, &content);
            m_mailbox.append({content.data(), content.size()});
        }
        reportReadError();
    }
    m_mailbox.append(text.substr(written));
}
