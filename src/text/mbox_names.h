#pragma once

#include <QString>

/// True if a file may be a mailbox by its path: it holds none of ".mbs", ".emlx", ".eml", ".olm" anywhere and
/// does not end in ".mbox" (case-sensitive).
bool mayBeMailbox(const QString &path);
