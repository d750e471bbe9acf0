#include "save/bundle.h"

void setTargetBundle(const Bundle &bundle)
{
    for (const Bundle *each : {&outlookBundle, &appleBundle})
        *each->isTarget = each == &bundle;
}

QString bundlePath(const Bundle &bundle, const QString &folder)
{
    return folder + QLatin1Char('/') + QLatin1String(bundle.name);
}
