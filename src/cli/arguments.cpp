#include "cli/arguments.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace
{
struct CommandName {
    const char *name;
    Command command;
    QStringList options; ///< allowed beside those that every command takes
};

const std::vector<CommandName> &commandNames()
{
    static const std::vector<CommandName> rows = {
        {"scan", Command::Scan, {}},
        {"list", Command::List, {QStringLiteral("folder")}},
        {"preview", Command::Preview, {QStringLiteral("folder")}},
        {"convert",
         Command::Convert,
         {QStringLiteral("folder"), QStringLiteral("to"), QStringLiteral("replace"), QStringLiteral("out"),
          QStringLiteral("exact"), QStringLiteral("dry-run"), QStringLiteral("check"),
          QStringLiteral("report")}},
    };
    return rows;
}

void addOptions(QCommandLineParser *parser)
{
    const auto add = [parser](const char *name, const char *value = "") {
        QCommandLineOption option(QString::fromLatin1(name));
        option.setValueName(QString::fromLatin1(value));
        parser->addOption(option);
    };
    add("client", "CLIENT");
    add("folder", "TREE");
    add("to", "TARGET");
    add("out", "DIR");
    add("report", "FILE");
    for (const char *flag : {"json", "quiet", "replace", "exact", "dry-run", "check", "help", "version"})
        add(flag);
}

QString absolutePath(const QString &path)
{
    return QDir::cleanPath(QDir::current().absoluteFilePath(path));
}

// The bundle that --to names, checked against what the target dialog would offer for the client.
QString chooseTarget(const QCommandLineParser &parser, Arguments *arguments)
{
    const Targets offered = arguments->kind->targets;
    arguments->toAppleMail = offered == Targets::AppleMail;
    if (!parser.isSet(QStringLiteral("to")))
        return {};
    const QString target = parser.value(QStringLiteral("to"));
    if (target != QLatin1String("outlook") && target != QLatin1String("apple-mail"))
        return QStringLiteral("unknown target: ") + target;
    arguments->toAppleMail = target == QLatin1String("apple-mail");
    if (offered != Targets::Both &&
        offered != (arguments->toAppleMail ? Targets::AppleMail : Targets::Outlook))
        return QStringLiteral("%1 can't be written from %2")
            .arg(target, QString::fromLatin1(arguments->kind->cliName));
    return {};
}

QString readConvertOptions(const QCommandLineParser &parser, Arguments *arguments)
{
    arguments->replace = parser.isSet(QStringLiteral("replace"));
    arguments->exact = parser.isSet(QStringLiteral("exact"));
    arguments->dryRun = parser.isSet(QStringLiteral("dry-run"));
    arguments->check = parser.isSet(QStringLiteral("check"));
    arguments->report = parser.value(QStringLiteral("report"));
    if (const QString error = chooseTarget(parser, arguments); !error.isEmpty())
        return error;
    if (parser.value(QStringLiteral("out")).isEmpty())
        return QStringLiteral("convert needs --out DIR");
    arguments->outDir = absolutePath(parser.value(QStringLiteral("out")));
    if (!QFileInfo(arguments->outDir).isDir())
        return QStringLiteral("no such folder: ") + arguments->outDir;
    return {};
}

QString checkOptions(const QCommandLineParser &parser, const CommandName &command)
{
    for (const char *name : {"folder", "to", "out", "replace", "exact", "dry-run", "check", "report"})
        if (parser.isSet(QLatin1String(name)) && !command.options.contains(QLatin1String(name)))
            return QStringLiteral("%1 takes no --%2").arg(QLatin1String(command.name), QLatin1String(name));
    return {};
}

QString readArguments(const QCommandLineParser &parser, Arguments *arguments)
{
    const QStringList words = parser.positionalArguments();
    if (words.isEmpty())
        return QStringLiteral("no command; try --help");
    const auto &rows = commandNames();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const CommandName &r) { return words.at(0) == QLatin1String(r.name); });
    if (row == rows.end())
        return QStringLiteral("unknown command: ") + words.at(0);
    arguments->command = row->command;
    if (const QString error = checkOptions(parser, *row); !error.isEmpty())
        return error;
    arguments->kind = findStoreKind(parser.value(QStringLiteral("client")));
    if (!parser.isSet(QStringLiteral("client")))
        return QStringLiteral("%1 needs --client CLIENT").arg(words.at(0));
    if (!arguments->kind)
        return QStringLiteral("unknown client: ") + parser.value(QStringLiteral("client"));
    if (words.size() != 2 || words.at(1).isEmpty())
        return QStringLiteral("%1 needs one STORE").arg(words.at(0));
    arguments->store = absolutePath(words.at(1));
    arguments->folders = parser.values(QStringLiteral("folder"));
    return row->command == Command::Convert ? readConvertOptions(parser, arguments) : QString();
}
} // namespace

Arguments parseArguments(const QStringList &arguments)
{
    Arguments result;
    QCommandLineParser parser;
    addOptions(&parser);
    if (!parser.parse(arguments)) {
        result.error = parser.errorText();
        return result;
    }
    result.json = parser.isSet(QStringLiteral("json"));
    result.quiet = parser.isSet(QStringLiteral("quiet"));
    if (parser.isSet(QStringLiteral("help")))
        return result;
    if (parser.isSet(QStringLiteral("version"))) {
        result.command = Command::Version;
        return result;
    }
    result.error = readArguments(parser, &result);
    return result;
}

QString helpText()
{
    QString clients;
    for (const StoreKind &kind : storeKinds())
        if (kind.client > 0)
            clients += QStringLiteral("  %1 %2  %3\n")
                           .arg(QString::fromLatin1(kind.cliName).leftJustified(12))
                           .arg(kind.client, 2)
                           .arg(QString::fromLatin1(kind.label));
    return QStringLiteral(
               "velmora-convert: moves mail from one mail client's store to a bundle for another.\n\n"
               "  velmora-convert scan    --client CLIENT [--json] STORE\n"
               "  velmora-convert list    --client CLIENT [--json] [--folder TREE]... STORE\n"
               "  velmora-convert preview --client CLIENT [--json] [--folder TREE]... STORE\n"
               "  velmora-convert convert --client CLIENT [--json] [--folder TREE]...\n"
               "                          [--to outlook|apple-mail] [--replace] --out DIR STORE\n"
               "  velmora-convert --help | --version\n\n"
               "STORE is the folder (or the .olm file) of the mail client; it is only read.\n"
               "TREE names a folder by the names on the way to it: \"Mail/Local Folders/Inbox\".\n"
               "--out DIR gets the bundle \"Main Identity.rge\" (Outlook 2011) or\n"
               "\"Main Identity.mbox\" (Apple Mail); --replace removes an old one first.\n"
               "--quiet shows no progress. Progress goes to a terminal only.\n\n"
               "CLIENT, by name or number:\n%1\n"
               "Exit status: 0 done, 1 nothing to read, 2 usage, 3 stopped by a signal,\n"
               "4 ended early or the bundle can't be written.\n")
        .arg(clients);
}
