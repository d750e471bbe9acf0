#include "scan/message_saving_thread.h"

#include "scan/opera_scan.h"
#include "scan/passed_over_scan.h"

void QMessageSavingThread::FileSearchForMbs()
{
    if (!beginFiles())
        return;
    OperaScan scan(m_indexMessages ? OperaFields::All : OperaFields::Folder);
    if (scan.find())
        takeFiles(
            scan.paths(), [&](const QString &path) { return scan.take(path); },
            [this](FileStep step, const QString &path) {
                tellPassedOver({QStringLiteral(".mbs"), {}, true, QString()}, step, path);
            });
}
