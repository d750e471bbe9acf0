#include "app/passed_over.h"

#include <iterator>

namespace
{
constexpr const char *reasonNames[] = {"unreadable", "name", "excluded-name", "no-folder",
                                       "compressed", "part", "not-reached"};
static_assert(std::size(reasonNames) == passedOverReasons);
} // namespace

const char *nameOf(PassedOverReason reason)
{
    return reasonNames[static_cast<size_t>(reason)];
}

void PassedOver::add(const QString &path, PassedOverReason reason)
{
    if (m_files.size() < mostFiles)
        m_files.push_back({path, reason});
    else
        ++m_beyond[static_cast<size_t>(reason)];
}
