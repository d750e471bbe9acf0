#include "save/outlook_bundle.h"

#include "app/problem_log.h"
#include "save/bundle_place.h"

#include <QFile>

namespace
{
const char packageInfo[] = "rge OPIM";

const char plistHead[] = "<?xml version=\"1.1\" encoding=\"UTF-8\"?>\n"
                         "<!DOCTYPE plist PUBLIC \"-//Apple Computer//DTD PLIST 1.1//EN\" "
                         "\"http://www.apple.com/DTDs/PropertyList-1.1.dtd\">"
                         "\n<plist version=\"1.1\">\n<dict>";
static_assert(sizeof plistHead - 1 == 150 + 29, "readers of the bundle count on these lengths");

const char infoBody[] = "\n\t<key>CFBundleDevelopmentRegion</key>\n\t<string>English</string>"
                        "\n\t<key>CFBundleInfoDictionaryVersion</key>\n\t<string>6.0</string>"
                        "\n\t<key>CFBundlePackageType</key>\n\t<string>rge </string>"
                        "\n\t<key>CFBundleSignature</key>\n\t<string>OPIM</string>"
                        "\n</dict>\n</plist>\n";
static_assert(sizeof infoBody - 1 == 236 + 18, "likewise");

const char archiveBody[] =
    "\n\t<key>Type</key>\n\t<string>All</string>\n\t<key>Version</key>\n\t<integer>1</integer>"
    "\n</dict>\n</plist>\n";
static_assert(sizeof plistHead - 1 + sizeof archiveBody - 1 == 278, "likewise");

void appendToFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append) || file.write(bytes) != bytes.size() ||
        !file.flush())
        reportUnwritten(Problem::tr("can't be written: %1: %2").arg(path, file.errorString()));
}
} // namespace

void CreateFilesInMainIdentity(const QString &root)
{
    appendToFile(root + QStringLiteral("/Contents/PkgInfo"), packageInfo);
    appendToFile(root + QStringLiteral("/Contents/Info.plist"), QByteArray(plistHead) + infoBody);
    appendToFile(root + QStringLiteral("/Archive.xml"), QByteArray(plistHead) + archiveBody);
}

void prepareOutlookBundle(const QString &root)
{
    const QString contents = root + QStringLiteral("/Contents");
    if (const int error = bundlePlace.makeFolder(contents))
        reportUnwritten(Problem::tr("can't be written: %1: %2").arg(contents, qt_error_string(error)));
    else
        CreateFilesInMainIdentity(root);
}

void prepareBundle(const Bundle &bundle)
{
    if (&bundle == &outlookBundle)
        prepareOutlookBundle(bundlePath(bundle, saveDir));
}
