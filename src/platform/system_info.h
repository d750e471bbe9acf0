#pragma once

#include <QByteArray>
#include <QString>

/// What the operating system calls itself.
struct SystemInfo {
    QString name;    ///< such as "Debian GNU/Linux"
    QString version; ///< such as "12 (bookworm)"
};

/// Reads the text of an os-release file (os-release(5)): NAME, and VERSION or else VERSION_ID. What is missing
/// stays empty.
SystemInfo parseOsRelease(const QByteArray &text);

/// The running system; where it tells no name or version, those of its kernel (uname).
SystemInfo systemInfo();
