#include "platform/find_files.h"

#include <QCoreApplication>
#include <QFile>

#include <atomic>
#include <cstdlib>

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
    // noclobber: whoever put a link at the list's place meanwhile gets nothing overwritten.
    const QString command = QStringLiteral("set -C; find %1  -name %2 ! -path '*\n*' > %3 2>&1")
                                .arg(shellQuoted(folder), shellQuoted(namePattern), shellQuoted(listPath));
    const int status = std::system(QFile::encodeName(command).constData());
    Q_UNUSED(status) // find also fails where it only could not enter a folder
    QFile list(listPath);
    if (!list.open(QIODevice::ReadOnly) || !isOwn(list))
        return std::nullopt;
    const QByteArray lines = list.readAll();
    list.remove();
    return pathsOfLines(lines);
}
