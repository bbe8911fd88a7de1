// SPDX-License-Identifier: MIT
#include "system/worker.h"

#include <utility>

#include <sys/resource.h>
#include <unistd.h>

Worker::~Worker()
{
    clear();
}

void Worker::add(Task task, Rank rank)
{
    {
        const std::lock_guard lock(m_mutex);
        (rank == Rank::First ? m_first : m_usual).push_back(std::move(task));
    }
    m_changed.notify_all();
    if (m_threads.size() < m_threadCount) {
        m_threads.emplace_back([this](const std::stop_token& quit) { work(quit); });
    }
}

void Worker::setHeld(bool isHeld)
{
    {
        const std::lock_guard lock(m_mutex);
        m_isHeld = isHeld;
    }
    m_changed.notify_all();
}

void Worker::clear()
{
    std::unique_lock lock(m_mutex);
    m_first.clear();
    m_usual.clear();
    m_changed.wait(lock, [this] { return m_running == 0; });
}

void Worker::work(const std::stop_token& quit)
{
    if (m_priority == Priority::Low) {
        constexpr int lowPriority = 10; // as of nice(1); here each thread has its own
        ::setpriority(PRIO_PROCESS, id_t(::gettid()), lowPriority);
    }
    const auto mayBegin = [this] { return !m_isHeld && !(m_first.empty() && m_usual.empty()); };
    std::unique_lock lock(m_mutex);
    while (m_changed.wait(lock, quit, mayBegin)) {
        auto& tasks = m_first.empty() ? m_usual : m_first;
        Task task = std::move(tasks.front());
        tasks.pop_front();
        ++m_running;
        lock.unlock();
        task();
        task = {}; // what it holds goes before it counts as done
        lock.lock();
        --m_running;
        m_changed.notify_all();
    }
}
