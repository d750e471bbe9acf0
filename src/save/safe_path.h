#pragma once

#include <QString>

/// A relative path from foreign text, safe to append to a folder: a component that is "." or ".." and each zero
/// character are spelled with "%2E" and "%00", so that the path never leads up and no two such folders fall
/// together. Every other path comes back as it is, double and leading slashes included.
QString harmlessPath(const QString &relative);
