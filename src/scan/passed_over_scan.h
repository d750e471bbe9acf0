#pragma once

#include <QSet>
#include <QString>

/// Tells of a folder of the store that can't be read: a problem that ends the scan's good outcome, and passed over.
void tellUnreadableFolder(const QString &path, const QString &error);

/// What the walk over a store with a file for each message goes by.
struct TakenFiles {
    QString suffix;           ///< of message files: ".emlx"
    QSet<QString> takenParts; ///< .emlxpart files that a message took
    bool isWhole = true;      ///< false: the scan ended before all files were looked at
    QString unreadable;       ///< the file that it ended at because it can't be read, "" for none
};
/// Goes through the selected folder and tells of each file that the scan has not taken: passed over, or another file.
void tellPassedOverFiles(const TakenFiles &taken);
