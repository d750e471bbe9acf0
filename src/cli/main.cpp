#include "cli/commands.h"
#include "cli/worker_run.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));
    // File names are bytes in UTF-8, whatever the locale says (the C locale would turn them into "?").
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));

    const Arguments arguments = parseArguments(QCoreApplication::arguments());
    if (!arguments.error.isEmpty()) {
        std::fprintf(stderr, "velmora-convert: %s\n", arguments.error.toUtf8().constData());
        return ExitUsage;
    }
    if (arguments.command == Command::Help) {
        std::fputs(helpText().toUtf8().constData(), stdout);
        return ExitDone;
    }
    if (arguments.command == Command::Version) {
        std::puts("velmora-convert " VELMORA_VERSION);
        return ExitDone;
    }
    catchStopSignals();
    return runCommand(arguments);
}
