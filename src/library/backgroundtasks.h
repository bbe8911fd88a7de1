// SPDX-License-Identifier: MIT
#pragma once

#include "system/worker.h"

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>

/// Runs tasks in one thread of its own, in the order in which they are given. What a task has made is adopted
/// in the thread that owns this object, also in order: by the event loop, or within adoptWithin(). Needs no
/// application object. Destroying it asks the running task to stop and drops all others.
class BackgroundTasks : public QObject {
    Q_OBJECT

public:
    using Priority = Worker::Priority;

    explicit BackgroundTasks(Priority priority, QObject* parent = nullptr);
    ~BackgroundTasks() override;

    /// Calls `make(stop_token)` there and `adopt(its result)` here.
    template <typename Make, typename Adopt>
    void run(Make make, Adopt adopt)
    {
        add([make, adopt](const std::stop_token& stop) -> Adoption {
            auto result = std::make_shared<decltype(make(stop))>(make(stop));
            return [adopt, result] { adopt(std::move(*result)); };
        });
    }

    /// While held, no task begins.
    void setHeld(bool isHeld);
    /// Adopts what is ready, and what gets ready within the time, until `isEnough()` or nothing is left to
    /// do.
    void adoptWithin(std::chrono::milliseconds time, const std::function<bool()>& isEnough);
    /// Drops tasks and results, and waits for the running task to stop.
    void cancel();
    /// No task is waiting or running, and every result has been adopted.
    [[nodiscard]] bool isIdle() const;

private:
    using Adoption = std::function<void()>;
    using Task = std::function<Adoption(const std::stop_token&)>;

    void add(const Task& task);
    void perform(const Task& task, const std::stop_token& stop);
    bool adoptNext();

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Adoption> m_made;
    size_t m_waiting = 0; ///< tasks
    bool m_isRunning = false;
    bool m_isHeld = false;
    std::stop_source m_stop; ///< of all that have been given since a cancel()
    Worker m_worker;         ///< last, so that it ends first
};
