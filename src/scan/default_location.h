#pragma once

#include <QString>

struct StoreKind;

/// Where a client keeps its store for a user with this login name: the client's path below the user's home
/// folder, "" for a client without one. The place need not exist.
QString defaultLocation(const StoreKind &kind, const QString &user);
