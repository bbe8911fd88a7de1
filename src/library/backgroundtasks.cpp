// SPDX-License-Identifier: MIT
#include "library/backgroundtasks.h"

#include <utility>

#include <sys/resource.h>
#include <unistd.h>

BackgroundTasks::BackgroundTasks(Priority priority, QObject* parent) : QObject(parent), m_priority(priority)
{
}

BackgroundTasks::~BackgroundTasks()
{
    cancel();
}

void BackgroundTasks::add(Task task)
{
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.push_back(std::move(task));
    }
    m_changed.notify_all();
    if (!m_thread.joinable()) {
        m_thread = std::jthread([this](const std::stop_token& quit) { work(quit); });
    }
}

void BackgroundTasks::setHeld(bool isHeld)
{
    {
        const std::lock_guard lock(m_mutex);
        m_isHeld = isHeld;
    }
    m_changed.notify_all();
}

void BackgroundTasks::work(const std::stop_token& quit)
{
    if (m_priority == Priority::Low) {
        constexpr int lowPriority = 10; // as of nice(1); here each thread has its own
        ::setpriority(PRIO_PROCESS, id_t(::gettid()), lowPriority);
    }
    std::unique_lock lock(m_mutex);
    while (m_changed.wait(lock, quit, [this] { return !m_waiting.empty() && !m_isHeld; })) {
        const Task task = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_stop = {};
        const std::stop_token stop = m_stop.get_token();
        m_isRunning = true;
        lock.unlock();
        Adoption adoption = task(stop);
        lock.lock();
        m_isRunning = false;
        if (!stop.stop_requested()) {
            m_made.push_back(std::move(adoption));
            QMetaObject::invokeMethod(
                this, [this] { adoptNext(); }, Qt::QueuedConnection);
        }
        m_changed.notify_all();
    }
}

bool BackgroundTasks::adoptNext()
{
    Adoption adoption;
    {
        const std::lock_guard lock(m_mutex);
        if (m_made.empty()) {
            return false;
        }
        adoption = std::move(m_made.front());
        m_made.pop_front();
    }
    adoption();
    return true;
}

void BackgroundTasks::adoptWithin(std::chrono::milliseconds time, const std::function<bool()>& isEnough)
{
    const auto end = std::chrono::steady_clock::now() + time;
    while (!isEnough()) {
        if (adoptNext()) {
            continue;
        }
        std::unique_lock lock(m_mutex);
        const bool mayCome = m_isRunning || (!m_waiting.empty() && !m_isHeld);
        if (!mayCome || !m_changed.wait_until(lock, end, [this] { return !m_made.empty(); })) {
            return;
        }
    }
}

void BackgroundTasks::cancel()
{
    std::unique_lock lock(m_mutex);
    m_waiting.clear();
    m_stop.request_stop();
    m_changed.wait(lock, [this] { return !m_isRunning; });
    m_made.clear();
}

bool BackgroundTasks::isIdle() const
{
    const std::lock_guard lock(m_mutex);
    return !m_isRunning && m_waiting.empty() && m_made.empty();
}
