#include "browse/preview.h"
#include "browse/preview_dialect.h"

#include <cstddef>
#include <cstdint>

// A message's bytes through both previews, headers and text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    previewOfBytes(bytes, filePreview);
    previewOfBytes(bytes, mailboxPreview);
    return 0;
}
