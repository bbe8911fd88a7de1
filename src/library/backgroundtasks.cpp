// SPDX-License-Identifier: MIT
#include "library/backgroundtasks.h"

#include <utility>

BackgroundTasks::BackgroundTasks(Priority priority, QObject* parent) : QObject(parent), m_worker(priority)
{
}

BackgroundTasks::~BackgroundTasks()
{
    cancel();
}

void BackgroundTasks::add(const Task& task)
{
    {
        const std::lock_guard lock(m_mutex);
        ++m_waiting;
    }
    m_worker.add([this, task, stop = m_stop.get_token()] { perform(task, stop); });
}

void BackgroundTasks::setHeld(bool isHeld)
{
    {
        const std::lock_guard lock(m_mutex);
        m_isHeld = isHeld;
    }
    m_changed.notify_all();
    m_worker.setHeld(isHeld);
}

void BackgroundTasks::perform(const Task& task, const std::stop_token& stop)
{
    {
        const std::lock_guard lock(m_mutex);
        --m_waiting;
        m_isRunning = true;
    }
    Adoption adoption = stop.stop_requested() ? Adoption() : task(stop);
    {
        const std::lock_guard lock(m_mutex);
        m_isRunning = false;
        if (!stop.stop_requested()) {
            m_made.push_back(std::move(adoption));
            QMetaObject::invokeMethod(
                this, [this] { adoptNext(); }, Qt::QueuedConnection);
        }
    }
    m_changed.notify_all();
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
        const bool mayCome = m_isRunning || (m_waiting > 0 && !m_isHeld);
        if (!mayCome || !m_changed.wait_until(lock, end, [this] { return !m_made.empty(); })) {
            return;
        }
    }
}

void BackgroundTasks::cancel()
{
    m_stop.request_stop();
    m_stop = {};
    m_worker.clear();
    const std::lock_guard lock(m_mutex);
    m_waiting = 0;
    m_made.clear();
}

bool BackgroundTasks::isIdle() const
{
    const std::lock_guard lock(m_mutex);
    return !m_isRunning && m_waiting == 0 && m_made.empty();
}
