#include "cli/commands.h"
#include "cli/find_output.h"
#include "cli/say.h"
#include "cli/worker_run.h"
#include "platform/freed_memory.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <cerrno>
#include <cstdio>

namespace
{
int run(const Arguments &arguments)
{
    if (!arguments.error.isEmpty()) {
        say(arguments.error);
        return ExitUsage;
    }
    switch (arguments.command) {
    case Command::Help:
        std::fputs(helpText().toUtf8().constData(), stdout);
        return ExitDone;
    case Command::Version:
        std::puts("velmora-convert " VELMORA_VERSION);
        return ExitDone;
    case Command::Find:
        return runFind(arguments);
    default:
        return runCommand(arguments);
    }
}

// What was printed may still be in memory, and a full disk shows only when it is written.
int statusOfOutput(int status)
{
    const bool failedBefore = std::ferror(stdout) != 0;
    if (failedBefore)
        std::fputc('\n', stdout); // what went wrong is forgotten by now: it goes wrong once more
    errno = 0;
    if (std::fclose(stdout) == 0 && !failedBefore)
        return status;
    const QString reason = errno != 0 ? QStringLiteral(": ") + qt_error_string(errno) : QString();
    say(QStringLiteral("standard output can't be written") + reason);
    return status == ExitStopped ? status : ExitEndedEarly;
}
} // namespace

int main(int argc, char *argv[])
{
    keepFreedMemory();
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));
    // File names are bytes in UTF-8, whatever the locale says (the C locale would turn them into "?").
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));

    const Arguments arguments = parseArguments(QCoreApplication::arguments());
    catchStopSignals();
    return statusOfOutput(run(arguments));
}
