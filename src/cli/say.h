#pragma once

#include <QString>

/// A text of foreign origin for a terminal: control characters as visible marks, so that a subject can't move the
/// cursor or set the window's title. U+001B becomes "\x1b"; a tab, and a line feed where `lines`, stays.
QString visible(const QString &text, bool lines = false);
/// Says a sentence on standard error, in one line.
void say(const QString &sentence);
