#include "scan/no_data_reason.h"

#include "app/problem_log.h"
#include "app/shared_state.h"
#include "platform/folder_walk.h"
#include "scan/find_stores.h"
#include "scan/store_kinds.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace
{
struct OtherKind {
    const char *nameEnd;  ///< null: any name
    const char *inFolder; ///< the end of its folder's path, "" for any
    const char *text;
};

// clang-format off
//                            nameEnd   inFolder  text
const OtherKind otherKinds[] {{nullptr, "/cur",   QT_TRANSLATE_NOOP("Problem", "message file(s) of a maildir")},
                              {nullptr, "/new",   QT_TRANSLATE_NOOP("Problem", "message file(s) of a maildir")},
                              {".mbox", "",       QT_TRANSLATE_NOOP("Problem", "mailbox file(s) named .mbox")},
                              {".emlx", "",       QT_TRANSLATE_NOOP("Problem", ".emlx file(s)")},
                              {".eml",  "",       QT_TRANSLATE_NOOP("Problem", ".eml file(s)")},
                              {".mbs",  "",       QT_TRANSLATE_NOOP("Problem", ".mbs file(s)")},
                              {".olm",  "",       QT_TRANSLATE_NOOP("Problem", ".olm file(s)")},
                              {nullptr, "",       QT_TRANSLATE_NOOP("Problem", "file(s) without mail of this client")}};
// clang-format on

bool isOfKind(const QString &path, const OtherKind &kind)
{
    const QString folder = path.left(path.lastIndexOf(QLatin1Char('/')));
    return (!kind.nameEnd || path.endsWith(QLatin1String(kind.nameEnd))) &&
           folder.endsWith(QLatin1String(kind.inFolder));
}

struct FoundFiles {
    qint64 count = 0;
    QString example;
};

// The first row that has files, as the rows stand from what is told best to what is told if there is nothing else.
QString whatIsThere(const QString &store)
{
    FoundFiles found[std::size(otherKinds)];
    FolderVisit visit;
    visit.entry = [&found](const QString &path, bool isFolder) {
        if (isFolder)
            return;
        const auto kind = std::find_if(std::begin(otherKinds), std::end(otherKinds),
                                       [&path](const OtherKind &row) { return isOfKind(path, row); });
        FoundFiles &files = found[kind - std::begin(otherKinds)];
        if (files.count++ == 0)
            files.example = path;
    };
    visit.followsFolderLinks = false;
    walkFolder(store, visit);
    for (size_t i = 0; i < std::size(otherKinds); ++i)
        if (found[i].count > 0)
            return Problem::tr("no mailbox of this client in it, but %1 %2: %3")
                .arg(QString::number(found[i].count), Problem::tr(otherKinds[i].text), found[i].example);
    return Problem::tr("there is no file in it: ") + store;
}
// Where there is a store of another client; "" without one.
QString otherStore(const QString &path)
{
    const FoundStores found = findStores({path}, [] { return bStopFlag.load(); });
    const FoundStore *largest = largestStore(found);
    if (!largest)
        return QString();
    return Problem::tr("there is a store of %1, choose that client and %2")
        .arg(QLatin1String(findStoreKind(largest->client)->label), largest->path);
}
} // namespace

QString noDataReason(const QString &store, bool followsLinks)
{
    const QFileInfo info(store);
    if (!info.exists())
        return Problem::tr("no such folder: ") + store;
    if (info.isSymLink() && !followsLinks)
        return Problem::tr("this is a link, choose the folder that it leads to: ") + store;
    if (const QString other = otherStore(store); !other.isEmpty())
        return other;
    if (!info.isDir())
        return Problem::tr("a folder is wanted, this is a file: ") + store;
    return whatIsThere(store);
}

void reportNoData(bool followsLinks)
{
    if (!hasProblems())
        reportProblem(noDataReason(m_selectedFile, followsLinks));
}
