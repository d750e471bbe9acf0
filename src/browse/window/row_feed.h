#pragma once

#include "browse/message_rows.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <iterator>
#include <mutex>

/// Rows on their way from the thread that reads them to the list, which takes them in pieces. Both sides may call
/// at any time.
class RowFeed
{
public:
    void add(MessageRow row)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_rows.push_back(std::move(row));
    }
    void add(std::vector<MessageRow> rows)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        std::move(rows.begin(), rows.end(), std::back_inserter(m_rows));
    }
    /// The oldest rows, at most `most` of them.
    std::vector<MessageRow> take(size_t most)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto end = m_rows.begin() + static_cast<std::ptrdiff_t>(std::min(most, m_rows.size()));
        std::vector<MessageRow> rows(std::make_move_iterator(m_rows.begin()), std::make_move_iterator(end));
        m_rows.erase(m_rows.begin(), end);
        return rows;
    }
    /// No more rows are wanted: the reader ends when it sees it.
    void close() { m_closed = true; }
    bool isClosed() const { return m_closed; }

private:
    std::mutex m_mutex;
    std::deque<MessageRow> m_rows;
    std::atomic<bool> m_closed{false};
};
