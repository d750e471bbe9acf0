#pragma once

#include <QStringList>

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <future>
#include <mutex>
#include <queue>
#include <system_error>
#include <thread>
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
        for (unsigned i = std::clamp(std::thread::hardware_concurrency(), 1U, mostThreads); i > 0; --i) {
            begin();
            begin(); // so that no thread runs out of work
            try {
                m_threads.emplace_back([this] { work(); });
            } catch (const std::system_error &) {
                break; // the system gives no more threads: without one, `next` does the work
            }
        }
    }
    ReadAhead(const ReadAhead &) = delete;
    ReadAhead &operator=(const ReadAhead &) = delete;
    ~ReadAhead()
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_ended = true;
        }
        m_wake.notify_all();
        for (std::thread &thread : m_threads)
            thread.join();
    }

    /// What came of the next path. To be called at most once for each.
    Result next()
    {
        if (m_taken == m_results.size()) {
            if (m_threads.empty()) {
                m_tasks.front()();
                m_tasks.pop();
            }
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
    static constexpr unsigned mostThreads = 3;
    static constexpr int pathsAtOnce = 32;

    void begin()
    {
        const QStringList paths = m_paths.mid(m_begun, pathsAtOnce);
        m_begun += paths.size();
        if (paths.isEmpty())
            return;
        std::packaged_task<Results()> task([this, paths] {
            Results results;
            results.reserve(static_cast<size_t>(paths.size()));
            for (const QString &path : paths)
                results.push_back(m_read(path));
            return results;
        });
        m_ahead.push(task.get_future());
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_tasks.push(std::move(task));
        }
        m_wake.notify_one();
    }

    void work()
    {
        for (;;) {
            std::packaged_task<Results()> task;
            {
                std::unique_lock<std::mutex> lock(m_mutex);
                m_wake.wait(lock, [this] { return m_ended || !m_tasks.empty(); });
                if (m_ended)
                    return;
                task = std::move(m_tasks.front());
                m_tasks.pop();
            }
            task();
        }
    }

    const QStringList m_paths;
    const std::function<Result(const QString &)> m_read;
    int m_begun = 0;                          ///< of m_paths
    std::queue<std::future<Results>> m_ahead; ///< what was begun and not taken
    Results m_results;
    size_t m_taken = 0; ///< of m_results

    std::mutex m_mutex; ///< guards what is shared with the threads
    std::condition_variable m_wake;
    std::queue<std::packaged_task<Results()>> m_tasks; ///< what was begun and no thread has taken up
    bool m_ended = false;
    std::vector<std::thread> m_threads;
};
