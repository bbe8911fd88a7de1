// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/indexedpage.h"
#include "fulltext/indexfile.h"
#include "fulltext/searchsource.h"

#include <QStringList>

#include <functional>
#include <stop_token>

/// What bringing an index up to date led to.
struct IndexingResult {
    enum class State {
        Complete,
        Stopped, ///< what has been read so far is kept
        Damaged, ///< the database is of no use any more
        Failed,  ///< it cannot be written
    };
    State state = State::Complete;
    bool isKept = false; ///< the index is in the cache, where others find it
    QString whyNotKept;  ///< otherwise, for people
    QStringList errors;  ///< sentences for people, each with the name of a file
};

/// Told about pages that are done, of all.
using IndexingProgress = std::function<void(qint64 done, qint64 total)>;

/// Whether a database holds what the pages of a help set say; changes nothing. False when a stop is asked
/// for.
[[nodiscard]] bool isUpToDate(Database& database, const SearchSource& source, const SourcePages& pages,
                              const std::stop_token& stop);

/// Lets a database hold what the pages of a help set say, reading those that have changed in threads of its
/// own. Changes are kept in steps of a second or two.
[[nodiscard]] IndexingResult updateIndex(Database& database, const SearchSource& source,
                                         const SourcePages& pages, const std::stop_token& stop,
                                         const IndexingProgress& progress);
