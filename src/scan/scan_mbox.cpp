#include "scan/message_saving_thread.h"

void QMessageSavingThread::PostBoxFileSearch()
{
    emit OnIndivisibleProgressvalue(100);
    emit NoDataIntoFile();
}
