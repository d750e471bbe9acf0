#include "save/mail_saving.h"

void QMailSaving::FileSearch()
{
    emitFinished();
}
void QMailSaving::FileSearchForEmlOutlook()
{
    emitFinished();
}
void QMailSaving::FileSearchForEmlAppleMail()
{
    emitFinished();
}
void QMailSaving::FileSearchForEmlandfEmlOutlook()
{
    emitFinished();
}
void QMailSaving::FileSearchForEmlandfEmlAppleMail()
{
    emitFinished();
}
void QMailSaving::FileSearchForMbsOutlook()
{
    emitFinished();
}
void QMailSaving::FileSearchForMbsAppleMail()
{
    emitFinished();
}
