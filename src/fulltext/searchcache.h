// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

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
