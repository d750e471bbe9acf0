#pragma once

#include <QString>

/// A list in which a ";" follows each item: "a;b;c;".

/// The last item, where the list holds two ";" or more; else the text without any ";". What an .olm message shows
/// as its sender.
QString lastItem(const QString &list);

/// True if two lists, their entities undone, have the same number of items, and at least one: what an .olm message
/// needs to show recipients.
bool correspond(const QString &addresses, const QString &names);

/// The text with all "&lt;", then all "&amp;", then all "&nbsp;" (a blank) undone, in this case only. Other
/// entities stay, with the ";" that they hold.
QString entitiesUndone(QString text);
