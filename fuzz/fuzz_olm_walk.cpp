#include "scan/olm_record.h"
#include "scan/olm_walk.h"

#include <cstdlib>

// Whatever an archive says, its texts hold no zero bytes and are no longer than it is, the walk only goes forward,
// and looks at each byte a few times at most.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    ByteSource archive = ByteSource::ofBytes({reinterpret_cast<const char *>(data), size});
    qint64 last = -1;
    size_t looked = 0;
    OlmWalkEvents events;
    events.goOn = [&](qint64 position) {
        if (position <= last)
            std::abort();
        last = position;
        return true;
    };
    events.attachment = [](const QString &, qint64, qint64) {};
    events.messages = [&](const OlmText &text) {
        looked += static_cast<size_t>(text.xml->size());
        if (text.xml->contains('\0') || static_cast<size_t>(text.folder.size()) > size || looked > 4 * size)
            std::abort();
    };
    walkOlm(&archive, events);
    return 0;
}
