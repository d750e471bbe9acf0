#include "scan/message_saving_thread.h"

void QMessageSavingThread::FileSearchForMbs()
{
    emit OnIndivisibleProgressvalue(100);
    emit NoDataIntoFile();
}
