#pragma once

#include <QStringList>
#include <QThreadPool>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <future>
#include <memory>
#include <queue>
#include <utility>
#include <vector>

/// Calls a function with each of many paths in threads of its own, some way ahead of who takes the results, in the
/// order of the paths: with small files, opening and reading takes longer than anything done with them. The function
/// must not touch what others do. Only what is in work and not yet taken is held.
template <typename Result>
class ReadAhead
{
public:
    ReadAhead(const QStringList &paths, std::function<Result(const QString &)> read)
        : m_paths(paths), m_read(std::move(read))
    {
        m_threads.setMaxThreadCount(std::min(m_threads.maxThreadCount(), mostThreads));
        for (int i = 0; i < 2 * m_threads.maxThreadCount(); ++i)
            begin();
    }

    /// What came of the next path. To be called at most once for each.
    Result next()
    {
        if (m_taken == m_results.size()) {
            m_results = m_ahead.front().get();
            m_ahead.pop();
            m_taken = 0;
            begin();
        }
        return std::move(m_results.at(m_taken++));
    }

private:
    using Results = std::vector<Result>;

    // Files held open stay well below the number that a process may open, and what a thread has read is still in the
    // processor's cache when it is taken.
    static constexpr int mostThreads = 3;
    static constexpr int pathsAtOnce = 32;

    void begin()
    {
        const QStringList paths = m_paths.mid(m_begun, pathsAtOnce);
        m_begun += paths.size();
        if (paths.isEmpty())
            return;
        const auto task = std::make_shared<std::packaged_task<Results()>>([paths, read = m_read] {
            Results results;
            results.reserve(static_cast<size_t>(paths.size()));
            for (const QString &path : paths)
                results.push_back(read(path));
            return results;
        });
        m_ahead.push(task->get_future());
        m_threads.start([task] { (*task)(); });
    }

    QStringList m_paths;
    std::function<Result(const QString &)> m_read;
    int m_begun = 0; ///< of m_paths
    std::queue<std::future<Results>> m_ahead;
    Results m_results;
    size_t m_taken = 0; ///< of m_results
    QThreadPool m_threads;
};
