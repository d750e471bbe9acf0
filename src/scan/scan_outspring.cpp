#include "scan/message_saving_thread.h"

void QMessageSavingThread::FileSearchForEmlandfEml()
{
    emit OnIndivisibleProgressvalue(100);
    emit NoDataIntoFile();
}
