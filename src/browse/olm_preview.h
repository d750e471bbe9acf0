#pragma once

#include <QByteArray>
#include <QString>

/// The body of an .olm message as it goes to the web view, whatever it was: the XML escapes of the archive undone,
/// up to the first zero byte, as UTF-8. What was escaped twice keeps its inner escapes, but for "&gt;".
QString olmBodyHtml(QByteArray body);
