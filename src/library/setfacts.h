// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <stop_token>

/// What can be said of a help set without opening it in the window.
struct SetFacts {
    QString title;   ///< the file name when it gives itself none
    int topics = -1; ///< rows of its contents; -1 when unknown
    QString trouble; ///< a sentence part: why it cannot be opened, or its first error with file and line
    bool canBeOpened = false;
};

/// Reads the contents, in any thread.
[[nodiscard]] SetFacts factsOf(const QString& fileName, const std::stop_token& stop = {});
