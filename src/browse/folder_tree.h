#pragma once

#include <QString>

#include <vector>

/// The folder tree without its widget: names shown, the order of arrival, and the tick marks. The records
/// (FolderAttribNode) are what a save goes by; the window's items only mirror them.

/// The name shown for a folder: every ".mailbox" taken out, else every ".imapmbox", else every ".mbox".
QString displayName(const QString &name);

/// Adds the record of a folder that the scan has sent; before the first one, the root's.
void addFolderRecord(qint64 folderId, qint64 parentId);

/// Ticks (stateTicked) or unticks (stateNotTicked) a folder as a click on its box does: the root sets all
/// records, any other folder sets everything below it, and its ancestors sum up their children. A partly
/// ticked state given for a folder only goes up. Gives the ancestors whose state was worked out anew, nearest
/// first.
std::vector<qint64> markFolder(qint64 folderId, quint8 state);

/// Sets every record to not ticked: the end of a save.
void unmarkAllFolders();
