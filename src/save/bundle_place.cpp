#include "save/bundle_place.h"

#include "app/problem_log.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr char lockName[] = ".Main Identity.lock";
constexpr mode_t newFolderMode = 0777;
constexpr mode_t newFileMode = 0666;

bool areSame(const struct stat &one, const struct stat &other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

FileHandle openFolder(const QString &path)
{
    return FileHandle(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

bool leadsTo(const QByteArray &path, const FileHandle &open)
{
    struct stat there = {};
    struct stat held = {};
    return ::stat(path.constData(), &there) == 0 && ::fstat(open.descriptor(), &held) == 0 &&
           areSame(there, held);
}

// The folders that a path goes through, as it is written and with links resolved, the last name's link or not.
QStringList waysTo(const QString &path)
{
    const QFileInfo info(path);
    const QString folder = QFileInfo(info.path()).canonicalFilePath();
    QStringList ways{QDir::cleanPath(path), folder + QLatin1Char('/') + info.fileName(),
                     info.canonicalFilePath()};
    ways.removeAll(QString());
    return ways;
}

bool liesIn(const QString &inner, const QString &outer)
{
    struct stat wanted = {};
    if (::stat(QFile::encodeName(outer).constData(), &wanted) != 0)
        return false;
    for (QString path : waysTo(inner))
        for (int end = path.size(); end > 0; end = path.lastIndexOf(QLatin1Char('/'))) {
            path.truncate(end);
            struct stat info = {};
            if (::stat(QFile::encodeName(path).constData(), &info) == 0 && areSame(info, wanted))
                return true;
        }
    struct stat root = {};
    return ::stat("/", &root) == 0 && areSame(root, wanted);
}

// A bundle that is on its way out: its removal may take long, and a name that is gone at once leaves no half bundle.
QString leavingPath(const QString &bundle)
{
    return BundlePlace::oldPath(bundle) + QStringLiteral(".removed");
}

// Removes what stands at a path: a folder with all in it, a file, or a link as a link. True if nothing is left.
bool removeAll(const QString &path)
{
    const QFileInfo info(path);
    if (info.isSymLink() || info.isFile())
        return QFile::remove(path);
    return !info.exists() || QDir(path).removeRecursively();
}

bool moveTo(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

int makePath(const QString &path)
{
    errno = 0;
    if (QDir().mkpath(path))
        return 0;
    return errno != 0 ? errno : ENOENT;
}
} // namespace

QString BundlePlace::conflict(const QString &store, const QString &bundle)
{
    for (const QString &going : {bundle, oldPath(bundle)}) {
        if (!isThere(going))
            continue;
        if (liesIn(store, going))
            return tr("can't be replaced, the store lies in it: %1 (store: %2)").arg(going, store);
        if (liesIn(going, store))
            return tr("can't be replaced, it lies in the store: %1 (store: %2)").arg(going, store);
    }
    return {};
}

bool BundlePlace::isThere(const QString &path)
{
    struct stat info = {};
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0;
}

QString BundlePlace::oldPath(const QString &bundle)
{
    return bundle + QStringLiteral(".old");
}

QString BundlePlace::open(const QString &bundle, Old old)
{
    leave();
    m_bundle = bundle;
    m_replaces = old == Old::Replace;
    const QString folder = QFileInfo(bundle).path();
    m_folder = openFolder(folder);
    QString problem;
    if (!m_folder.isOpen())
        problem = tr("can't be opened: %1: %2").arg(folder, qt_error_string(errno));
    if (problem.isEmpty())
        problem = lock();
    if (problem.isEmpty())
        problem = moveOldAside(old);
    if (!problem.isEmpty())
        leave();
    return problem;
}

// A lock is held by its open file, so that the file of a save that was killed locks nothing. Who waits for the file
// of a save that ends finds it gone, and makes another one.
QString BundlePlace::lock()
{
    const QString path = QFileInfo(m_bundle).path() + QLatin1Char('/') + QLatin1String(lockName);
    for (;;) {
        FileHandle file(::openat(m_folder.descriptor(), lockName,
                                 O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, newFileMode));
        struct stat held = {};
        struct stat there = {};
        if (!file.isOpen() && (errno == ELOOP || errno == EISDIR || errno == ENXIO))
            return tr("is no lock file: %1").arg(path);
        // A folder that takes no file: what the save writes there shows why.
        if (!file.isOpen() || ::fstat(file.descriptor(), &held) != 0)
            return {};
        if (!S_ISREG(held.st_mode))
            return tr("is no lock file: %1").arg(path);
        if (::flock(file.descriptor(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
            return tr("another save writes there: %1").arg(QFileInfo(m_bundle).path());
        if (::fstatat(m_folder.descriptor(), lockName, &there, AT_SYMLINK_NOFOLLOW) == 0 &&
            areSame(there, held)) {
            m_lock = std::move(file);
            return {};
        }
    }
}

// While an older bundle stands aside, the one in its place was not finished.
QString BundlePlace::moveOldAside(Old old)
{
    if (!isThere(m_bundle))
        return {};
    if (old == Old::Refuse)
        return tr("already exists: %1").arg(m_bundle);
    if (!m_lock.isOpen())
        return tr("can't be replaced, its folder takes no file: %1").arg(m_bundle);
    if (isThere(oldPath(m_bundle)))
        return removeAll(m_bundle) ? QString() : tr("can't be removed: %1").arg(m_bundle);
    return moveTo(m_bundle, oldPath(m_bundle))
               ? QString()
               : tr("can't be moved aside: %1: %2").arg(m_bundle, qt_error_string(errno));
}

int BundlePlace::makeFolder(const QString &path)
{
    if (!isOpen() || (path != m_bundle && !path.startsWith(m_bundle + QLatin1Char('/'))))
        return makePath(path);
    if (const int error = m_root.isOpen() ? 0 : makeBundle())
        return error;
    return leadsTo(QFile::encodeName(m_bundle), m_root) ? makePath(path) : ENOENT;
}

int BundlePlace::makeBundle()
{
    const QByteArray name = QFile::encodeName(QFileInfo(m_bundle).fileName());
    if (::mkdirat(m_folder.descriptor(), name.constData(), newFolderMode) != 0)
        return errno;
    m_root = FileHandle(
        ::openat(m_folder.descriptor(), name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    return m_root.isOpen() ? 0 : errno;
}

void BundlePlace::sync(const std::function<bool()> &goOn)
{
    if (!m_root.isOpen() || isLost())
        return;
    const auto bring = [](const FileHandle &file, const QString &path) {
        // EINVAL: the file system has no such call.
        if (!file.isOpen() || (::fsync(file.descriptor()) != 0 && errno != EINVAL))
            reportUnwritten(tr("can't be brought to the disk: %1: %2").arg(path, qt_error_string(errno)));
    };
    QDirIterator walk(m_bundle,
                      QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks | QDir::Hidden,
                      QDirIterator::Subdirectories);
    while (walk.hasNext() && goOn()) {
        const QString path = walk.next();
        bring(FileHandle(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)),
              path);
    }
    bring(m_root, m_bundle);
    bring(m_folder, QFileInfo(m_bundle).path());
}

bool BundlePlace::isLost()
{
    const QString folder = QFileInfo(m_bundle).path();
    return !leadsTo(QFile::encodeName(folder), m_folder) ||
           (m_root.isOpen() && !leadsTo(QFile::encodeName(m_bundle), m_root));
}

bool BundlePlace::finish(bool whole)
{
    if (!isOpen())
        return whole;
    if (isLost()) {
        whole = false;
        reportUnwritten(
            tr("was taken away or renamed during the save, with what was written to it: %1").arg(m_bundle));
    }
    const QString old = oldPath(m_bundle);
    if (whole && m_replaces)
        removeOld();
    else if (isThere(old))
        reportProblem(tr("the old bundle stays: %1").arg(old));
    leave();
    return whole;
}

void BundlePlace::removeOld()
{
    const QString old = oldPath(m_bundle);
    const QString leaving = leavingPath(m_bundle);
    bool gone = removeAll(leaving);
    if (gone && isThere(old))
        gone = moveTo(old, leaving) && removeAll(leaving);
    if (!gone)
        reportProblem(tr("the old bundle can't be removed: %1").arg(isThere(old) ? old : leaving));
}

// The lock's file goes while it is still locked, or it could be another one's.
void BundlePlace::leave()
{
    if (m_lock.isOpen())
        ::unlinkat(m_folder.descriptor(), lockName, 0);
    m_lock.close();
    m_root.close();
    m_folder.close();
}
