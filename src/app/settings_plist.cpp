#include "app/settings_plist.h"

#include "app/shared_state.h"
#include "platform/property_list.h"

QString linkSetting(const QString &key)
{
    const QSettings settings(strPlistPath, propertyListFormat());
    return settings.value(key).toString();
}
