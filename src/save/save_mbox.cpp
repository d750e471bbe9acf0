#include "save/mail_saving.h"

void QMailSaving::PostBoxFileSearch()
{
    emitFinished();
}
