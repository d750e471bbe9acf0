#include "save/safe_path.h"

#include <QStringList>

QString harmlessPath(const QString &relative)
{
    const QLatin1Char slash('/');
    const QLatin1Char dot('.');
    const QChar zero(0);
    if (!relative.contains(dot) && !relative.contains(zero))
        return relative;
    QStringList components = relative.split(slash);
    for (QString &component : components) {
        if (component == QLatin1String(".") || component == QLatin1String(".."))
            component.replace(dot, QLatin1String("%2E"));
        component.replace(zero, QLatin1String("%00"));
    }
    return components.join(slash);
}
