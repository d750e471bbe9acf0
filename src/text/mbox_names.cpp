#include "text/mbox_names.h"

bool mayBeMailbox(const QString &path)
{
    for (const char *other : {".mbs", ".emlx", ".eml", ".olm"})
        if (path.contains(QLatin1String(other)))
            return false;
    return !path.endsWith(QLatin1String(".mbox"));
}
