#pragma once

#include <QString>

/// The tree path of a mailbox file, "/"-separated folder names that start with "Mail": a bundle's "mbox" by its
/// place below `selected`, else what stands behind the last "/ImapMail" or "/Mail" of the path, else the path
/// below `selected`.
QString treePathOfMailbox(const QString &path, const QString &selected);
