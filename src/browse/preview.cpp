#include "browse/preview.h"

PreviewText previewOfFile(const QString &)
{
    return {};
}

PreviewText previewOfMailboxMessage(const QString &, const QString &, const QString &)
{
    return {};
}
