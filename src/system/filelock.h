// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>
#include <stop_token>

/// Keeps others from changing something for as long as it lives: an advisory lock on a file of its own, which
/// the kernel drops with the process.
class FileLock {
public:
    enum class State {
        Held,
        Taken,      ///< somebody else has it
        Impossible, ///< the file cannot be made
    };

    /// No lock at all.
    FileLock() = default;
    /// Makes the file, with its directory, and waits for others until the time is over or a stop is asked
    /// for.
    FileLock(const QString& file, std::chrono::milliseconds patience, const std::stop_token& stop = {});
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool isHeld() const { return m_state == State::Held; }

private:
    int m_file = -1;
    State m_state = State::Impossible;
};
