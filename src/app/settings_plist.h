#pragma once

#include <QString>

/// A value of the settings property list (MailConverterLink.plist at strPlistPath), read anew on each call; "" for
/// a missing key or a file that can't be read.
QString linkSetting(const QString &key);
