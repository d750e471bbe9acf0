#include "platform/find_files.h"

#include <QCoreApplication>
#include <QFile>

#include <atomic>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
// A list that someone else laid there beforehand, where files of others can't be removed, is not ours to read.
bool isOwn(const QFile &file)
{
    struct stat info = {};
    return ::fstat(file.handle(), &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == ::geteuid();
}

// Waits for its end. Not by system(), which would lose an interrupt of this program meanwhile. What the command
// returns is not looked at: find also fails where it only could not enter a folder.
void runInShell(const QString &command)
{
    if (std::FILE *shell = ::popen(QFile::encodeName(command).constData(), "r"))
        ::pclose(shell);
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
                                     const QString &listFile)
{
    static std::atomic<int> runs{0};
    const QString listPath =
        QStringLiteral("%1.%2.%3").arg(listFile).arg(QCoreApplication::applicationPid()).arg(++runs);
    QFile::remove(listPath);
    // noclobber: whoever put a link at the list's place meanwhile gets nothing overwritten. The interrupt that stops this
    // program reaches the search as well, from a terminal; it must not cut the list short.
    runInShell(QStringLiteral("trap '' INT TERM; set -C; find %1  -name %2 ! -path '*\n*' > %3 2>&1")
                   .arg(shellQuoted(folder), shellQuoted(namePattern), shellQuoted(listPath)));
    QFile list(listPath);
    if (!list.open(QIODevice::ReadOnly) || !isOwn(list))
        return std::nullopt;
    const QByteArray lines = list.readAll();
    list.remove();
    return pathsOfLines(lines);
}
