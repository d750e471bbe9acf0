#include "cli/arguments.h"

#include "save/writers.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace
{
struct CommandRow {
    const char *name;
    Command command;
    const char *arguments; ///< as --help shows them, a line feed where it goes on in the next line
    const char *about;
};

const CommandRow commandRows[] = {
    {"scan", Command::Scan, "--client CLIENT [--json] STORE",
     "Show the folders of a store and how many messages each holds."},
    {"list", Command::List, "--client CLIENT [--json] [--folder TREE]... STORE",
     "Show the sender and subject of each message."},
    {"preview", Command::Preview, "--client CLIENT [--json] [--folder TREE]... STORE",
     "Show the headers and the text of each message."},
    {"convert", Command::Convert,
     "--client CLIENT [--json] [--folder TREE]...\n"
     "[--to TARGET] [--replace] [--exact] [--dry-run]\n"
     "[--check] [--report FILE] --out DIR STORE",
     "Write the folders to a bundle in DIR, and account for every message."},
    {"find", Command::Find, "[--json] [DIR]...",
     "Look below each DIR, or the home folder, for stores of mail."},
};

struct OptionRow {
    QStringList names; ///< what messages call it comes first
    const char *value;
    QVector<Command> commands; ///< that take it; none: all of them
    const char *about;         ///< a line feed where it goes on in the next line
};

const std::vector<OptionRow> &optionRows()
{
    const auto names = [](const char *words) { return QString::fromLatin1(words).split(QLatin1Char(' ')); };
    const QVector<Command> stores{Command::Scan, Command::List, Command::Preview, Command::Convert};
    const QVector<Command> folders{Command::List, Command::Preview, Command::Convert};
    const QVector<Command> saves{Command::Convert};
    // clang-format off
    static const std::vector<OptionRow> rows = {
        {names("client"), "CLIENT", stores, "Whose store it is: a name or number of the list below."},
        {names("folder"), "TREE", folders, "Only this folder, named by the folders on the way to it:\n"
                                           "\"Mail/Local Folders/Inbox\". For convert all below it too."},
        {names("out o output"), "DIR", saves, "An existing folder for the bundle, \"Main Identity.rge\"\n"
                                              "(Outlook 2011) or \"Main Identity.mbox\" (Apple Mail)."},
        {names("to"), "TARGET", saves, "outlook or apple-mail. Without it Outlook, where it can be\n"
                                    "written from the store."},
        {names("replace"), "", saves, "Replace a bundle that is already there."},
        {names("exact"), "", saves, "Keep every byte of every message."},
        {names("dry-run"), "", saves, "Write no bundle, only tell what would be written."},
        {names("check"), "", saves, "Read the bundle again and compare it with what was written."},
        {names("report"), "FILE", saves, "Write the account of all messages to FILE (.json: as JSON)."},
        {names("json"), "", {}, "Print one JSON document instead of text."},
        {names("quiet q"), "", {}, "Show no progress. It is shown only on a terminal."},
        {names("help h"), "", {}, "Print this text."},
        {names("version v"), "", {}, "Print the version."},
    };
    // clang-format on
    return rows;
}

QString absolutePath(const QString &path)
{
    return QDir::cleanPath(QDir::current().absoluteFilePath(path));
}

// The bundle that --to names, checked against what the target dialog would offer for the client.
constexpr bool isOffered(const StoreKind &kind, const Bundle &bundle)
{
    return kind.targets == Targets::Both ||
           kind.targets == (&bundle == &appleBundle ? Targets::AppleMail : Targets::Outlook);
}

constexpr bool clientsHaveTheirWriters()
{
    for (const StoreKind &kind : storeKinds)
        for (const Bundle *bundle : {&outlookBundle, &appleBundle})
            if (isOffered(kind, *bundle) && !findWriter(kind.store->kindFlag, *bundle))
                return false;
    return true;
}
static_assert(clientsHaveTheirWriters(), "what a client offers can be written");

QString chooseTarget(const QCommandLineParser &parser, Arguments *arguments)
{
    arguments->bundle = isOffered(*arguments->kind, outlookBundle) ? &outlookBundle : &appleBundle;
    if (!parser.isSet(QStringLiteral("to")))
        return {};
    const QString target = parser.value(QStringLiteral("to"));
    if (target != QLatin1String("outlook") && target != QLatin1String("apple-mail"))
        return QStringLiteral("unknown target: ") + target;
    arguments->bundle = target == QLatin1String("apple-mail") ? &appleBundle : &outlookBundle;
    if (!isOffered(*arguments->kind, *arguments->bundle))
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
    if (QString error = chooseTarget(parser, arguments); !error.isEmpty())
        return error;
    if (parser.value(QStringLiteral("out")).isEmpty())
        return QStringLiteral("convert needs --out DIR");
    arguments->outDir = absolutePath(parser.value(QStringLiteral("out")));
    if (!QFileInfo(arguments->outDir).isDir())
        return QStringLiteral("no such folder: ") + arguments->outDir;
    return {};
}

QString checkOptions(const QCommandLineParser &parser, const CommandRow &command)
{
    for (const OptionRow &option : optionRows())
        if (!option.commands.isEmpty() && !option.commands.contains(command.command) &&
            parser.isSet(option.names.first()))
            return QStringLiteral("%1 takes no --%2").arg(QLatin1String(command.name), option.names.first());
    return {};
}

QString withoutSlash(QString tree)
{
    while (tree.size() > 1 && tree.endsWith(QLatin1Char('/')))
        tree.chop(1);
    return tree;
}

QString readPlaces(const QStringList &words, Arguments *arguments)
{
    for (const QString &word : words.isEmpty() ? QStringList(QDir::homePath()) : words) {
        if (word.isEmpty())
            return QStringLiteral("find can't look below a folder without a name");
        arguments->places.append(absolutePath(word));
    }
    return {};
}

QString readStore(const QCommandLineParser &parser, const CommandRow &command, Arguments *arguments)
{
    const QString name = QLatin1String(command.name);
    const QStringList words = parser.positionalArguments();
    if (!parser.isSet(QStringLiteral("client")))
        return QStringLiteral("%1 needs --client CLIENT").arg(name);
    arguments->kind = findStoreKind(parser.value(QStringLiteral("client")));
    if (!arguments->kind)
        return QStringLiteral("unknown client: ") + parser.value(QStringLiteral("client"));
    if (words.size() != 2 || words.at(1).isEmpty())
        return QStringLiteral("%1 needs one STORE").arg(name);
    arguments->store = absolutePath(words.at(1));
    for (const QString &tree : parser.values(QStringLiteral("folder")))
        arguments->folders.append(withoutSlash(tree));
    return command.command == Command::Convert ? readConvertOptions(parser, arguments) : QString();
}

QString readArguments(const QCommandLineParser &parser, Arguments *arguments)
{
    const QStringList words = parser.positionalArguments();
    if (words.isEmpty())
        return QStringLiteral("no command; try --help");
    const auto row = std::find_if(std::begin(commandRows), std::end(commandRows),
                                  [&](const CommandRow &r) { return words.at(0) == QLatin1String(r.name); });
    if (row == std::end(commandRows))
        return QStringLiteral("unknown command: ") + words.at(0);
    arguments->command = row->command;
    if (QString error = checkOptions(parser, *row); !error.isEmpty())
        return error;
    return row->command == Command::Find ? readPlaces(words.mid(1), arguments)
                                         : readStore(parser, *row, arguments);
}

QString indented(const char *text, int columns)
{
    return QString::fromLatin1(text).replace(QLatin1Char('\n'),
                                             QLatin1Char('\n') + QString(columns, QLatin1Char(' ')));
}

QString helpOfCommands()
{
    constexpr int nameColumns = 26;
    QString text;
    for (const CommandRow &row : commandRows)
        text += QStringLiteral("  velmora-convert %1 %2\n      %3\n")
                    .arg(QLatin1String(row.name), -7)
                    .arg(indented(row.arguments, nameColumns), QLatin1String(row.about));
    return text;
}

// "  -o, --out, --output DIR", and what it does.
QString helpOfOptions()
{
    constexpr int nameColumns = 20;
    const QString gap(nameColumns, QLatin1Char(' '));
    QString text;
    for (const OptionRow &row : optionRows()) {
        QStringList names;
        for (const QString &name : row.names)
            names.insert(name.size() == 1 ? 0 : names.size(),
                         (name.size() == 1 ? QLatin1String("-") : QLatin1String("--")) + name);
        const QString head = QStringLiteral("  %1 %2")
                                 .arg(names.join(QLatin1String(", ")), QLatin1String(row.value))
                                 .trimmed();
        text += QStringLiteral("  ") + head.leftJustified(nameColumns - 2);
        if (head.size() > nameColumns - 4)
            text += QLatin1Char('\n') + gap;
        text += indented(row.about, nameColumns) + QLatin1Char('\n');
    }
    return text;
}

QString helpOfClients()
{
    QString text;
    for (const StoreKind &kind : storeKinds)
        if (kind.client > 0)
            text += QStringLiteral("  %1 %2  %3\n")
                        .arg(QLatin1String(kind.cliName), -12)
                        .arg(kind.client, 2)
                        .arg(QLatin1String(kind.label));
    return text;
}
} // namespace

Arguments parseArguments(const QStringList &arguments)
{
    Arguments result;
    QCommandLineParser parser;
    for (const OptionRow &row : optionRows())
        parser.addOption({row.names, QString(), QLatin1String(row.value)});
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
    return QStringLiteral(
               "velmora-convert: moves mail from one mail client's store to a bundle for another.\n\n"
               "%1"
               "  velmora-convert --help | --version\n\n"
               "STORE is the folder (or the .olm file) of the mail client; it is only read.\n\n"
               "Options:\n%2\n"
               "CLIENT, by name or number:\n%3\n"
               "Examples:\n"
               "  velmora-convert find\n"
               "  velmora-convert convert --client thunderbird --to apple-mail --exact \\\n"
               "      -o ~/Desktop ~/.thunderbird/abcd.default\n\n"
               "Exit status: 0 done, 1 nothing to read, 2 usage, 3 stopped by a signal,\n"
               "4 something could not be read or written; what was reached is kept.\n")
        .arg(helpOfCommands(), helpOfOptions(), helpOfClients());
}
