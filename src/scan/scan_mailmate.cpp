#include "scan/message_saving_thread.h"

void QMessageSavingThread::FileSearchForEml()
{
    emit OnIndivisibleProgressvalue(100);
    emit NoDataIntoFile();
}
