// The copy of a hostile mailbox against one that is made line by line; and where the source fails on the way, each
// "From " line of the target is a written message's, or is counted as a stray.

#include "app/problem_log.h"
#include "line_by_line.h"
#include "save/mailbox_copy.h"
#include "scratch_folder.h"

#include <cstdint>

namespace
{
const ScratchFolder &folder()
{
    static const ScratchFolder made;
    return made;
}

void check(bool holds)
{
    if (!holds)
        std::abort();
}

// The target, or nothing where the copy does not take the source.
QByteArray copyOf(ByteSource source, size_t block)
{
    const QString name = QStringLiteral("target");
    QFile::remove(folder().path(name));
    MailboxCopy copy;
    copy.setBlockBytes(block);
    if (!copy.open(std::move(source)))
        return {};
    MailboxFile target;
    target.open(folder().path(name), outlookMailbox);
    copy.copyTo(&target, [](qint64, qint64) { return true; });
    target.close();
    const QByteArray written = folder().read(name);
    const int fromLines = written.count("\nFrom ") + (written.startsWith("From ") ? 1 : 0);
    check(copy.tally().written() + copy.tally().strays() == fromLines);
    return written;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const bool isTaken = bytes.substr(0, 5) == "From ";
    const QByteArray expected =
        isTaken ? LineByLine().copy(folder().write(QStringLiteral("source"), bytes)) : QByteArray();
    for (const size_t block : {size_t{128}, size_t{131}, size_t{4096}})
        check(copyOf(ByteSource::ofBytes(bytes), block) == expected);
    check(takeProblems().isEmpty());
    if (!isTaken)
        return 0;
    const auto end = static_cast<qint64>(size / 2);
    copyOf(ByteSource::failing(bytes, end, QStringLiteral("source")), 128);
    check(takeProblems().size() == 1);
    return 0;
}
