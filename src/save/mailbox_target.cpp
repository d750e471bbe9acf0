#include "save/mailbox_target.h"

#include "save/safe_path.h"

namespace
{
// The mailbox with the name of the folder that it lies in.
MailboxTarget targetOfFolder(const Bundle &bundle, const QString &saveFolder, const QString &folder)
{
    const QString place = harmlessPath(folder);
    return targetInMail(bundle, saveFolder, place + QLatin1Char('/'),
                        place.mid(place.lastIndexOf(QLatin1Char('/')) + 1));
}
} // namespace

MailboxTarget targetInMail(const Bundle &bundle, const QString &saveFolder, const QString &place,
                           const QString &name)
{
    const QString folder = bundlePath(bundle, saveFolder) + QStringLiteral("/Mail") + place;
    return {folder, folder + name + QStringLiteral(".mbox")};
}

MailboxTarget operaToOutlook(const QString &source, const QString &, const QString &saveFolder)
{
    return targetOfFolder(outlookBundle, saveFolder, source);
}

MailboxTarget operaToAppleMail(const QString &source, const QString &, const QString &saveFolder)
{
    return targetOfFolder(appleBundle, saveFolder, source);
}

MailboxTarget olmToAppleMail(const QString &source, const QString &, const QString &saveFolder)
{
    const QString folder = source.isEmpty() ? QStringLiteral("Folder1") : source;
    return targetOfFolder(appleBundle, saveFolder, QLatin1Char('/') + folder);
}
