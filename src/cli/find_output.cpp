#include "cli/find_output.h"

#include "cli/json_writer.h"
#include "cli/say.h"
#include "cli/worker_run.h"
#include "platform/find_files.h"
#include "scan/find_stores.h"

#include <QLocale>
#include <QTextStream>

namespace
{
void printJson(const FoundStores &found)
{
    JsonWriter json(stdout);
    json.beginObject();
    json.key("stores").beginArray();
    for (const FoundStore &store : found.stores) {
        json.beginObject();
        json.key("client").value(static_cast<qint64>(store.client));
        json.key("name").value(QString::fromLatin1(findStoreKind(store.client)->cliName));
        json.key("path").value(store.path);
        json.key("mailboxes").value(store.files);
        json.key("bytes").value(store.bytes);
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

// A path as one word of a shell. One that would act on the terminal is written in the form $'...', which names its
// bytes: $'/home/x/odd\x1bname'.
QString shellWord(const QString &path)
{
    if (visible(path) == path)
        return shellQuoted(path);
    QString word;
    for (const char byte : path.toUtf8()) {
        const bool plain = byte > ' ' && byte < 0x7F && byte != '\'' && byte != '\\';
        word += plain ? QString(QLatin1Char(byte))
                      : QStringLiteral("\\x%1").arg(static_cast<uchar>(byte), 2, 16, QLatin1Char('0'));
    }
    return QStringLiteral("$'%1'").arg(word);
}

QString countOf(const FoundStore &store, const StoreKind &kind)
{
    const QString size = QLocale::c().formattedDataSize(store.bytes, 1, QLocale::DataSizeSIFormat);
    if (kind.store == &olmStore)
        return size;
    const bool mailboxes = kind.store == &mboxStore;
    return QStringLiteral("%1 %2%3, %4")
        .arg(store.files)
        .arg(mailboxes ? QLatin1String("mailbox") : QLatin1String("message file"),
             store.files == 1 ? QLatin1String("")
             : mailboxes      ? QLatin1String("es")
                              : QLatin1String("s"),
             size);
}

void printText(const FoundStores &found)
{
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    for (const FoundStore &store : found.stores) {
        const StoreKind &kind = *findStoreKind(store.client);
        out << kind.label << ": " << countOf(store, kind) << '\n';
        out << "    " << visible(store.path) << '\n';
        out << "    velmora-convert convert --client " << kind.cliName << " --out . " << shellWord(store.path)
            << '\n';
    }
}
} // namespace

int runFind(const Arguments &arguments)
{
    const FoundStores found = findStores(arguments.places, stopSignalled);
    if (arguments.json)
        printJson(found);
    else
        printText(found);
    for (const QString &problem : found.problems)
        say(problem);
    if (stopSignalled()) {
        say(QStringLiteral("stopped before all folders were searched"));
        return ExitStopped;
    }
    if (found.stores.empty())
        say(QStringLiteral("no store of mail found below ") + arguments.places.join(QStringLiteral(", ")));
    return ExitDone;
}
