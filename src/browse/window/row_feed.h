#pragma once

#include "browse/message_rows.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>
#include <vector>

/// Rows on their way from the thread that reads them to the list, which takes them in pieces. Both sides may call
/// at any time.
class RowFeed
{
public:
    /// Hands a row on.
    void add(MessageRow row)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_parts.empty())
            m_parts.emplace_back();
        m_parts.back().push_back(std::move(row));
    }
    /// Takes any number of rows without holding the other side up.
    void add(std::vector<MessageRow> rows)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_parts.push_back(std::move(rows));
    }
    /// The oldest rows, at most `most` of them.
    std::vector<MessageRow> take(size_t most)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::vector<MessageRow> rows;
        while (!m_parts.empty() && rows.size() < most) {
            std::vector<MessageRow> &part = m_parts.front();
            const size_t end = std::min(part.size(), m_taken + most - rows.size());
            for (; m_taken < end; ++m_taken)
                rows.push_back(std::move(part[m_taken]));
            if (m_taken < part.size())
                break;
            m_parts.pop_front();
            m_taken = 0;
        }
        return rows;
    }
    /// No more rows are wanted: the reader ends when it sees it.
    void close() { m_closed = true; }
    bool isClosed() const { return m_closed; }

private:
    std::mutex m_mutex;
    std::deque<std::vector<MessageRow>> m_parts;
    size_t m_taken = 0; ///< rows of the first part that have gone
    std::atomic<bool> m_closed{false};
};
