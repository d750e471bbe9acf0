#include "platform/find_files.h"

#include "platform/byte_source.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <limits>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr int pollMilliseconds = 50;
constexpr int mostTries = 1000; // names that others have taken

// A folder of one's own, with all that is in it for as long as this lives.
class PrivateFolder
{
public:
    explicit PrivateFolder(const QString &name)
    {
        static std::atomic<int> runs{0};
        for (int i = 0; i < mostTries && m_path.isEmpty(); ++i) {
            const QString path =
                QStringLiteral("%1.%2.%3").arg(name).arg(QCoreApplication::applicationPid()).arg(++runs);
            if (::mkdir(QFile::encodeName(path).constData(), 0700) == 0)
                m_path = path;
            else if (errno != EEXIST)
                break;
        }
        if (m_path.isEmpty())
            m_error = QStringLiteral("%1: %2").arg(name, qt_error_string(errno));
    }
    ~PrivateFolder()
    {
        QFile::remove(list());
        ::rmdir(QFile::encodeName(m_path).constData());
    }
    PrivateFolder(const PrivateFolder &) = delete;
    PrivateFolder &operator=(const PrivateFolder &) = delete;

    bool isThere() const { return !m_path.isEmpty(); }
    const QString &error() const { return m_error; }
    QString list() const { return m_path + QStringLiteral("/list"); }

private:
    QString m_path;
    QString m_error;
};

// Waits for the command's end, or ends it. Gives its exit status, -1 where it had none.
int runInShell(const QString &command, const std::function<bool()> &goOn)
{
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
    while (!shell.waitForFinished(pollMilliseconds) && shell.state() != QProcess::NotRunning)
        if (!goOn())
            shell.kill();
    return shell.exitStatus() == QProcess::NormalExit && shell.error() != QProcess::FailedToStart
               ? shell.exitCode()
               : -1;
}

// A name that is no text is passed over.
QStringList pathsOfLines(const QByteArray &lines)
{
    QStringList paths;
    for (int start = 0; start < lines.size();) {
        int end = lines.indexOf('\n', start);
        end = end < 0 ? lines.size() : end;
        const QByteArray line = QByteArray::fromRawData(lines.constData() + start, end - start);
        const QString path = QFile::decodeName(line).trimmed();
        const bool isText =
            !path.contains(QChar::ReplacementCharacter) || QFile::encodeName(QFile::decodeName(line)) == line;
        if (isText && !path.isEmpty())
            paths.append(path);
        start = end + 1;
    }
    return paths;
}
} // namespace

QString shellQuoted(const QString &text)
{
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

std::optional<QStringList> findFiles(const QString &folder, const QString &namePattern,
                                     const QString &listFile, const std::function<bool()> &goOn,
                                     QString *error)
{
    const PrivateFolder own(listFile);
    *error = own.error();
    if (!own.isThere())
        return std::nullopt;
    // The interrupt that stops this program reaches the search as well, from a terminal; it must not cut the list short.
    const int status =
        runInShell(QStringLiteral("trap '' INT TERM; exec find %1  -name %2 ! -path '*\n*' > %3 2>&1")
                       .arg(shellQuoted(folder), shellQuoted(namePattern), shellQuoted(own.list())),
                   goOn);
    if (!goOn())
        return std::nullopt;
    ByteSource list = ByteSource::ofFile(own.list());
    QByteArray lines(static_cast<int>(std::min<qint64>(list.size(), std::numeric_limits<int>::max())), '\0');
    lines.truncate(static_cast<int>(list.read(0, lines.data(), lines.size())));
    *error = list.errorString();
    // A search that could not enter a folder fails as well, and says so in the list.
    if (error->isEmpty() && status != 0 && !lines.startsWith("find: ") && !lines.contains("\nfind: "))
        *error = QCoreApplication::translate(
                     "Problem", "the search failed with status %1, its list at %2 may be cut short")
                     .arg(status)
                     .arg(own.list());
    return error->isEmpty() ? std::make_optional(pathsOfLines(lines)) : std::nullopt;
}
