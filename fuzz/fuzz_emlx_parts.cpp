// Hostile bytes as a partial message of Apple Mail and, behind each line "%%", a part of it: all messages are accounted
// for, each "From " line of the mailbox is a written message's or a stray, and what is written is no longer than what
// is read, but for a ">" before such a line.

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "save/file_saving.h"
#include "scratch_folder.h"

#include <QDir>

#include <cstdint>
#include <optional>

namespace
{
constexpr int parts = 3;
constexpr int messages = 500;

// A store is searched once for its parts, and each is taken once: messages by the hundred, whose files are links to
// the same few, so that the search is paid for rarely.
class Store
{
public:
    Store()
    {
        QDir().mkpath(m_folder.path(QStringLiteral("In.mbox")));
        for (int part = 0; part <= parts; ++part) {
            const QString target = m_folder.write(contentOf(part), {});
            for (int number = 0; number < messages; ++number)
                QFile::link(target, m_folder.path(nameOf(number, part)));
        }
        m_selectedFile = m_folder.path(QString());
        saveDir = m_folder.path(QStringLiteral("out"));
        for (int number = 0; number < messages; ++number)
            listOfPathOfOnlyForTree.append(m_folder.path(nameOf(number, 0)));
    }

    // Saves a message of that text and those parts, and gives the mailbox.
    QByteArray save(const std::vector<std::string_view> &contents)
    {
        for (size_t part = 0; part <= parts; ++part)
            m_folder.write(contentOf(static_cast<int>(part)),
                           part < contents.size() ? contents[part] : std::string_view());
        if (m_next % messages == 0)
            m_saving.emplace(writeMail);
        const QString path = m_folder.path(nameOf(m_next++ % messages, 0));
        QFile::remove(m_folder.path(mailbox));
        if (!m_saving->save(ByteSource::ofFile(path)))
            std::abort();
        m_saving->closeMailbox();
        return m_folder.read(mailbox);
    }

private:
    static QString contentOf(int part) { return QStringLiteral("content %1").arg(part); }
    static QString nameOf(int number, int part)
    {
        return part == 0 ? QStringLiteral("In.mbox/%1.partial.emlx").arg(number)
                         : QStringLiteral("In.mbox/%1.%2.emlxpart").arg(number).arg(part + 1);
    }

    const ScratchFolder m_folder;
    const QString mailbox = QStringLiteral("out/Main Identity.rge/Mail/In/In.mbox");
    std::optional<FileSaving> m_saving;
    int m_next = 0;
};

std::vector<std::string_view> piecesOf(std::string_view bytes)
{
    constexpr std::string_view mark = "%%\n";
    std::vector<std::string_view> pieces;
    while (pieces.size() < parts && bytes.find(mark) != std::string_view::npos) {
        pieces.push_back(bytes.substr(0, bytes.find(mark)));
        bytes.remove_prefix(bytes.find(mark) + mark.size());
    }
    pieces.push_back(bytes);
    return pieces;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Store store;
    saveLedger.clear();
    const QByteArray mailbox = store.save(piecesOf({reinterpret_cast<const char *>(data), size}));
    const int fromLines = mailbox.count("\nFrom ") + (mailbox.startsWith("From ") ? 1 : 0);
    const int quoted = mailbox.count("\n>From ");
    const FolderCount &total = saveLedger.total();
    if (mailbox.isEmpty() || total.found != 1 || !saveLedger.addsUp() ||
        total.written + saveLedger.strays() != fromLines || saveLedger.bytes() != mailbox.size() ||
        mailbox.size() > static_cast<int>(size) + quoted + 64)
        std::abort();
    takeProblems();
    return 0;
}
