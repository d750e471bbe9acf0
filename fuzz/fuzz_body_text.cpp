#include "browse/body_text.h"

#include <cstddef>
#include <cstdint>

// A body under every encoding and charset of the text step. The first byte picks them.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const char *const encodings[] = {"", " base64\n", " Base64\n", " quoted-printable\n",
                                            " Quoted-Printable\r\n"};
    static const char *const charsets[] = {"utf-8", "utf-8\r\n",      "ISO-8859-1",  "windows-1252",
                                           "UTF-8", "ks_c_5601-1987", "iso-2022-jp", "utf-16"};
    if (size == 0)
        return 0;
    WalkedMessage message;
    message.bHtmlFileFound = data[0] & 1;
    message.Base = QLatin1String(encodings[(data[0] >> 1) % 5]);
    message.charset = QLatin1String(charsets[(data[0] >> 4) % 8]);
    message.body = std::string_view(reinterpret_cast<const char *>(data) + 1, size - 1);
    for (const PreviewDialect *dialect : {&filePreview, &mailboxPreview}) {
        if (endOfText(*message.body, *dialect) > message.body->size())
            __builtin_trap();
        bodyText(message, *dialect);
    }
    return 0;
}
