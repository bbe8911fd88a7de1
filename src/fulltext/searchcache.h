// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>
#include <memory>
#include <optional>
#include <stop_token>

/// Keeps others from changing a file for as long as it lives; ends with the process at the latest.
class FileLock {
public:
    /// Takes the lock of a file that it makes, waiting for others until a stop is asked for, or for so long.
    FileLock(const QString& file, const std::stop_token& stop,
             std::optional<std::chrono::milliseconds> patience = std::nullopt);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    [[nodiscard]] bool isHeld() const { return m_isHeld; }
    /// Whether somebody else had it all the time; otherwise the file could not be made.
    [[nodiscard]] bool isTaken() const { return m_file >= 0 && !m_isHeld; }

private:
    int m_file = -1;
    bool m_isHeld = false;
};

/// The directory with the databases of the search. All in it may be deleted at any time.
namespace SearchCache {

/// The database for a help set, known by the canonical path of its contents file; the directory is made. Null
/// when there cannot be one.
[[nodiscard]] QString databaseFor(const QString& contentsFile);
/// Whether a help set has one, complete or not.
[[nodiscard]] bool hasDatabase(const QString& contentsFile);
/// The lock to hold while making or changing a database.
[[nodiscard]] QString lockFor(const QString& database);
/// Deletes a database whose lock is held.
void remove(const QString& database);
/// Notes that a database is in use, and deletes those that were not used for the longest time while there are
/// more than `mostBytes`.
void keepSmall(const QString& used, qint64 mostBytes = 1'000'000'000);

} // namespace SearchCache
