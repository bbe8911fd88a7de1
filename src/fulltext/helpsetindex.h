// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/indexwriter.h"
#include "fulltext/searchsource.h"
#include "fulltext/sourcepages.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>

/// What is needed to search a help set; a value that threads share.
struct SearchableSet {
    std::shared_ptr<const SearchSource> source;
    std::shared_ptr<const SourcePages> pages;
    QByteArray database;                ///< name, see IndexFile::open()
    std::shared_ptr<Database> inMemory; ///< what keeps a database that is in no file; else null
};

/// What to do while somebody else makes the same index.
struct IndexPatience {
    /// Then what is there has to do, or an index in memory. By default there is no end but a stop.
    std::chrono::milliseconds time = std::chrono::hours(1'000'000);
    std::function<void()> waits; ///< called when it has to wait; may be null
};

/// What is known of the index that is there.
enum class IndexTrust {
    Sound,
    Doubtful, ///< to be looked through before it is used, which takes a second for 50,000 pages
    Damaged   ///< of no use
};

/// Makes the index of a help set, or brings it up to date, in the user's cache or, where that cannot be
/// written, in memory. `ready` is called as soon as there is something to search in, and again when that has
/// moved.
[[nodiscard]] IndexingResult indexHelpSet(const std::shared_ptr<const SearchSource>& source,
                                          const std::stop_token& stop, const IndexingProgress& progress,
                                          const std::function<void(const SearchableSet&)>& ready,
                                          const IndexPatience& patience = {},
                                          IndexTrust trust = IndexTrust::Sound);
