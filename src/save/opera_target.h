#pragma once

#include "save/mbox_target.h"

#include <QString>

#include <string_view>

/// Looks through lines of an Opera Mail message file for "X-Opera-Location:" headers. The last one sets `location`
/// to the folder that it names, which may be empty but not null; without one it stays.
void takeOperaLocation(std::string_view lines, QString *location);

/// Where a message goes: the mailbox "/account/location" of the bundle, whose path is given; a null location is
/// "Mails".
MailboxTarget operaTarget(const QString &account, const QString &location, const QString &bundle);
