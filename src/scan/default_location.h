#pragma once

#include <QString>
#include <QStringList>

struct StoreKind;

/// Where a client keeps its store for a user with this login name: the client's path below the user's home
/// folder, "" for a client without one. The place need not exist.
QString defaultLocation(const StoreKind &kind, const QString &user);
/// The places below this home folder, and the mounted disks, where a client's store lies on this system; only those
/// that are there.
QStringList usualPlaces(const StoreKind &kind, const QString &home);
