#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

/// What a run of velmora-convert gave; status -1 for a crash.
struct Run {
    int status;
    QByteArray out;
    QByteArray err;
    QJsonValue json() const { return QJsonDocument::fromJson(out).object(); }
};

/// Runs velmora-convert, which the environment names, to its end.
inline Run convert(const QStringList &arguments)
{
    QProcess process;
    process.start(qEnvironmentVariable("VELMORA_CONVERT"), arguments);
    process.waitForFinished();
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), process.readAllStandardError()};
}
