#include "save/bundle_check.h"

#include "platform/byte_source.h"
#include "text/from_lines.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace
{
constexpr size_t blockBytes = 1 << 20;
constexpr int mostDifferences = 1000;

class BundleChecker
{
    Q_DECLARE_TR_FUNCTIONS(BundleChecker)

public:
    BundleChecker(const SaveLedger &ledger, const std::function<bool(qint64, qint64)> &goOn)
        : m_expected(ledger.bytes()), m_goOn(goOn), m_block(new char[blockBytes])
    {
    }

    // False if the check is to end.
    bool look(const TargetCount &target)
    {
        FromLines lines;
        const ByteSource mailbox = read(target.mailbox, &lines);
        if (m_check.stopped)
            return false;
        ++m_check.mailboxes;
        m_check.separators += lines.count();
        m_check.bytes += mailbox.size();
        if (!mailbox.errorString().isEmpty())
            add(tr("can't be read again: %1").arg(mailbox.errorString()));
        else if (mailbox.size() != target.bytes)
            add(tr("%1 bytes were written, %2 stand there: %3")
                    .arg(target.bytes)
                    .arg(mailbox.size())
                    .arg(target.mailbox));
        else if (lines.count() != target.fromLines)
            add(tr("%1 lines that start with \"From \" were written, %2 stand there: %3")
                    .arg(target.fromLines)
                    .arg(lines.count())
                    .arg(target.mailbox));
        return true;
    }

    const BundleCheck &result() const { return m_check; }

private:
    ByteSource read(const QString &path, FromLines *lines)
    {
        bringToDisk(path);
        ByteSource mailbox = ByteSource::ofFile(path);
        for (qint64 done = 0; done < mailbox.size();) {
            if (m_goOn && !m_goOn(m_check.bytes + done, m_expected)) {
                m_check.stopped = true;
                break;
            }
            const qint64 got = mailbox.read(done, m_block.get(), blockBytes);
            if (got == 0)
                break;
            lines->take({m_block.get(), static_cast<size_t>(got)});
            done += got;
        }
        return mailbox;
    }

    void bringToDisk(const QString &path)
    {
        const FileHandle file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        // What can't be opened shows when it is read; EINVAL: the file system has no such call.
        if (file.isOpen() && ::fsync(file.descriptor()) != 0 && errno != EINVAL)
            add(tr("can't be brought to the disk: %1: %2").arg(path, qt_error_string(errno)));
    }

    void add(const QString &difference)
    {
        if (m_check.differences.size() < mostDifferences)
            m_check.differences.append(difference);
    }

    qint64 m_expected;
    const std::function<bool(qint64, qint64)> &m_goOn;
    std::unique_ptr<char[]> m_block;
    BundleCheck m_check;
};
} // namespace

BundleCheck checkBundle(const SaveLedger &ledger, const std::function<bool(qint64, qint64)> &goOn)
{
    BundleChecker checker(ledger, goOn);
    for (const TargetCount &target : ledger.targets())
        if (target.bytes > 0 && !checker.look(target))
            break;
    return checker.result();
}
