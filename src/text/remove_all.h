#pragma once

#include <QString>

/// Takes every occurrence of `piece` out of `text`, from left to right. The same as QString::remove, in time
/// that grows with the text alone: that one moves the rest of the text for each occurrence.
void removeAll(QString *text, const QString &piece);
