#include "scan/message_saving_thread.h"

#include "scan/file_store_scan.h"

void QMessageSavingThread::FileSearchForEmlandfEml()
{
    scanFileStore(outspringStore);
}
