// The text of a message must not depend on how its lines are handed over.

#include "text/message_text.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace
{
std::string convert(std::string_view bytes, LineRule rule, bool lineByLine)
{
    MessageText text(rule);
    text.start();
    std::string out;
    while (!bytes.empty() && !text.hasEnded()) {
        const size_t feed = lineByLine ? bytes.find('\n') : std::string_view::npos;
        const std::string_view piece = bytes.substr(0, feed == std::string_view::npos ? feed : feed + 1);
        const std::vector<char> exact(piece.begin(), piece.end());
        out += text.take({exact.data(), exact.size()});
        bytes.remove_prefix(piece.size());
    }
    return out;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    for (const LineRule rule : {LineRule::Stay, LineRule::Filtered, LineRule::FromColonQuoted}) {
        const std::string whole = convert(bytes, rule, false);
        if (whole != convert(bytes, rule, true))
            std::abort();
        for (const qint64 place : partPlaces(whole))
            if (place > static_cast<qint64>(whole.size()))
                std::abort();
    }
    std::vector<char> part;
    appendPartLines(bytes, &part);
    if (part.size() > size)
        std::abort();
    return 0;
}
