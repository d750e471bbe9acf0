#pragma once

#include <QSettings>

/// The `QSettings` format that reads a property list: the native one where that is it, else one for XML property
/// lists (read-only). Only the entries of the outermost dictionary are seen, numbers and truth values as text; a
/// nested dictionary or array has no value. A file that is no well-formed property list has no entries at all.
/// Nothing outside the file is ever read: external entities are not resolved.
QSettings::Format propertyListFormat();
