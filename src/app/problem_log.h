#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/// What went wrong in a scan or save that goes on all the same: sentences for the user, each naming a path.
/// Workers add, the window and the command line take them when the run has ended. Safe from any thread.

/// The words of these sentences, in the language of the window; English on the command line.
class Problem
{
    Q_DECLARE_TR_FUNCTIONS(Problem)
};

/// Adds a sentence; one that stands there already is not added again.
void reportProblem(const QString &sentence);
/// The same where something of a store could not be read. An empty sentence is no problem, so that a reader hands on
/// its source's errorString() as it stands.
void reportUnread(const QString &sentence);
/// The same where something of a bundle could not be written.
void reportUnwritten(const QString &sentence);
/// True if something could not be read, or written, since the last call.
bool takeUnread();
bool takeUnwritten();
/// All sentences in the order in which they came, and forgets them.
QStringList takeProblems();
/// True if there is any.
bool hasProblems();
