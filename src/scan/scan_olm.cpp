#include "scan/message_saving_thread.h"

void QMessageSavingThread::CreateFile()
{
    emit OnIndivisibleProgressvalue(100);
    emit NoDataIntoFile();
}
