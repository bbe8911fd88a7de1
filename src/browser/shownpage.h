// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagefile.h"
#include "pages/preparedpage.h"
#include "sources/pagefiles.h"

#include <QString>

#include <optional>

/// What a view shows, and where it comes from.
struct ShownPage {
    QString file; ///< absolute path; empty for pages of the viewer's own
    std::optional<PageFileState> state;
    PageText source;
    bool isWhole = false;       ///< show all of it, however long that takes
    PreparedPage prepared = {}; ///< its title, links and text are there for plain text, too
    bool isStopped = false;     ///< the rest of it was not loaded
    bool isCut = false;         ///< the rest of its source is in the file only

    /// Whether it is what this file holds now.
    [[nodiscard]] bool isOf(const QString& name) const;
    /// Whether its source has this text somewhere; may read the file.
    [[nodiscard]] bool hasInSource(const QString& text) const;
    /// Lets go of the source of what is not shown.
    void dropRest();
    /// Reads it again, from the file as it is now.
    void readRest();
};
