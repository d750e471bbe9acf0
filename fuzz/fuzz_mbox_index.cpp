// The index of a hostile mailbox: its messages begin where a plain look at each line says, one behind the other, from
// the file's first byte to its last.

#include "app/problem_log.h"
#include "app/records.h"
#include "scan/mbox_index.h"
#include "scratch_folder.h"

#include <algorithm>
#include <cstdint>

namespace
{
bool separates(const QString &line)
{
    static const QStringList days =
        QStringLiteral(" Mon , Tue , Wed , Thu , Fri , Sat , Sun ").split(QLatin1Char(','));
    return line.startsWith(QStringLiteral("From ")) &&
           std::any_of(days.begin(), days.end(), [&](const QString &day) { return line.contains(day); });
}

// Where the messages begin, by the toolkit's reading of each line.
std::vector<qint64> startsIn(std::string_view bytes)
{
    std::vector<qint64> starts{0};
    for (size_t begin = 0, end = 0; begin < bytes.size(); begin = end) {
        const size_t feed = bytes.find('\n', begin);
        end = feed == std::string_view::npos ? bytes.size() : feed + 1;
        QByteArray line(bytes.data() + begin, static_cast<int>(end - begin));
        if (line.endsWith("\r\n"))
            line.remove(line.size() - 2, 1);
        const QString text = QString::fromUtf8(line.constData()); // up to a zero byte
        if (begin > 0 && separates(text))
            starts.push_back(static_cast<qint64>(end) - text.size());
    }
    return starts;
}

void check(bool holds)
{
    if (!holds)
        std::abort();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const ScratchFolder folder;
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const QString path = folder.write(QStringLiteral("Inbox"), bytes);
    const bool isMailbox = GetAllFieldsForTree(path);
    check(isMailbox == (lookAtMailbox(path) == MailboxStart::Separator));
    const auto &messages = messagesOfPath(path);
    const std::vector<qint64> starts = startsIn(bytes);
    const bool hasMore = bytes.find('\n') < bytes.size() - 1; // than one line
    check(messages.size() == (isMailbox && size > 0 && hasMore ? starts.size() : 0));
    for (size_t i = 0; i < messages.size(); ++i) {
        const qint64 end = i + 1 < starts.size() ? starts[i + 1] : static_cast<qint64>(size);
        check(messages[i]->offset == starts[i] && messages[i]->length == end - starts[i]);
        check(messages[i]->from.size() <= headerFieldLimit &&
              messages[i]->subject.size() <= headerFieldLimit);
    }
    freeMessages();
    check(takeProblems().isEmpty());
    return 0;
}
