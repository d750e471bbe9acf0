#pragma once

#include "save/mbox_target.h"

#include <QSet>

/// Where exact copies of a folder's mail go: each folder has a mailbox of its own, never shared. Below the bundle's
/// "Mail" stand folders of the names shown, in the last of them a file of its name: "Mail/Work/Plans/Plans.mbox" for
/// the tree path "Mail/Work/Plans". The leaf "mbox" of an exported mailbox is no folder of its own.
class ExactTargets
{
public:
    /// `bundle`: its absolute path.
    explicit ExactTargets(const QString &bundle);

    /// The mailbox of a folder, to be asked for once. Where a folder before it has the place, names compared without
    /// letter case and Unicode form, " (2)" or the first free number stands behind its name.
    MailboxTarget targetOf(qint64 folderId);

private:
    bool isFree(const QString &folder, const QString &file) const;
    QString folderAbove(const QString &parent, const QString &name);

    QString m_mail;
    QSet<QString> m_taken; ///< keys of the folders and files given
    QSet<QString> m_files; ///< keys of the files given
    QSet<QString> m_above; ///< keys of the folders on the way to others
};
