#include "scan/message_saving_thread.h"

void QMessageSavingThread::FileSearch()
{
    emit OnIndivisibleProgressvalue(100);
    emit NoDataIntoFile();
}
