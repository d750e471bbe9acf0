// Hostile bytes as a property list: what is not well-formed has no entries, and no entry is longer than the file allows,
// entities included.

#include "platform/property_list.h"
#include "scratch_folder.h"

#include <QXmlStreamReader>

#include <cstdint>

namespace
{
bool isWellFormed(std::string_view bytes)
{
    QXmlStreamReader xml(QByteArray(bytes.data(), static_cast<int>(bytes.size())));
    while (!xml.atEnd())
        xml.readNext();
    return !xml.hasError();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const ScratchFolder folder;
    static int number = 0; // what is read is kept by path
    constexpr int longestEntity = 4096;
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const QString path = folder.write(QStringLiteral("%1.plist").arg(++number), bytes);
    {
        const QSettings settings(path, propertyListFormat());
        const QStringList keys = settings.allKeys();
        if (!keys.isEmpty() && !isWellFormed(bytes))
            std::abort();
        for (const QString &key : keys)
            if (settings.value(key).toString().size() > static_cast<int>(size) * longestEntity)
                std::abort();
    }
    QFile::remove(path);
    return 0;
}
