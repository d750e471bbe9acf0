#pragma once

#include <QtGlobal>

/// The number of file records in ticked folders: what a save has to do.
quint64 countTickedItems();
