#include "save/mail_saving.h"

void QMailSaving::OnMailSaving()
{
    emitFinished();
}
