#pragma once

#include "platform/byte_source.h"
#include "save/save_ledger.h"

#include <functional>

/// The number of file records in ticked folders: what a save has to do.
quint64 countTickedItems();
/// The paths of those files in the order of a save.
QStringList tickedPaths();
/// The number of .olm records in ticked folders.
quint64 countTickedMessages();
/// The bytes of the files in ticked folders: about what their bundle needs. Of an .olm file: all of it.
qint64 tickedBytes();
/// Makes the ledger know the ticked folders that have file records, or records of an .olm file, in list order.
void enterTickedFolders();
/// Tells the ledger that of the files in ticked folders all from number `first` on, in the order of a save, were left
/// out; `countOf` gives the messages in a file, or nothing where their number is not known.
void leaveOutFiles(quint64 first, LeftOutReason reason,
                   const std::function<std::optional<qint64>(const QString &path)> &countOf);
/// The same for .olm records; `text`: a sentence with the reason, or "".
void leaveOutRecords(quint64 first, LeftOutReason reason, const QString &text);
/// True if an archive could be opened and is the one that was scanned, unchanged.
bool isScannedArchive(const ByteSource &archive);
/// Where it is not: tells so, and that all ticked messages were left out.
void leaveOutArchive(const ByteSource &archive);
