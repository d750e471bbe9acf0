#pragma once

#include "browse/preview.h"

#include <QByteArray>

/// The body of an .olm message as it goes to the web view, whatever it was: the XML escapes of the archive undone,
/// up to the first zero byte, as UTF-8. What was escaped twice keeps its inner escapes, but for "&gt;".
QString olmBodyHtml(QByteArray body);

/// A message of the .olm file m_selectedFile: the first record with this body offset and body size in bytes,
/// decimal text. Nothing if there is none.
std::optional<PreviewText> previewOfOlmMessage(const QString &bodyOffset, const QString &bodySize);
