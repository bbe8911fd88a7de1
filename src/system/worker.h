// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// Threads of their own that do tasks in the order in which these are given. They begin with the first task.
class Worker {
public:
    enum class Priority {
        Normal,
        Low, ///< leaves the processor to the window
    };
    enum class Rank {
        Usual,
        First, ///< before all usual ones that have not begun
    };
    using Task = std::function<void()>;

    explicit Worker(Priority priority, size_t threads = 1) : m_priority(priority), m_threadCount(threads) {}
    /// Drops what has not begun, and waits for what has.
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void add(Task task, Rank rank = Rank::Usual);
    /// While held, no task begins.
    void setHeld(bool isHeld);
    /// Drops what has not begun, and waits for what has.
    void clear();

private:
    void work(const std::stop_token& quit);

    const Priority m_priority;
    const size_t m_threadCount;
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<Task> m_first;
    std::deque<Task> m_usual;
    size_t m_running = 0;
    bool m_isHeld = false;
    std::vector<std::jthread> m_threads; ///< last, so that they end first
};
