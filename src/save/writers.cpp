#include "save/writers.h"

#include <algorithm>
#include <iterator>

namespace
{
constexpr bool writersDiffer()
{
    for (const Writer *one : writers)
        for (const Writer *other : writers)
            if (one != other && (findWriter(one->store, *one->bundle) != one || one->target == other->target))
                return false;
    return true;
}
static_assert(writersDiffer(), "a store and a bundle have one writer, and each writer its own target rule");

// A mailbox brings its separators along, OlmComposer writes those of an archive.
constexpr bool messageFilesHaveSeparators()
{
    for (const Writer *writer : writers)
        if ((writer->separator == nullptr) !=
            (writer->store == &bMboxFileFound || writer->store == &bOlmFileFound))
            return false;
    return true;
}
static_assert(messageFilesHaveSeparators());
} // namespace

const Writer *pickWriter()
{
    const auto *const end = std::end(writers);
    const auto *const picked = std::find_if(std::begin(writers), end, [](const Writer *writer) {
        return *writer->store && *writer->bundle->isTarget;
    });
    return picked == end ? nullptr : *picked;
}
