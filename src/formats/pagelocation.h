// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/// Where the name of a page leads: a file and a place in it. Names are "FILE" or "FILE#ANCHOR", and files,
/// folders and anchors may have "#" in their names themselves; anchors "/", too.
struct PageLocation {
    QString file;
    QString anchor; ///< without "#"; empty for the top of the page
};

/// Splits a name where `isFile` accepts what stands before the anchor: all of the name, else the longest
/// part of it; none when it accepts no part.
template <typename IsFile>
[[nodiscard]] std::optional<PageLocation> splitPageName(const QString& name, IsFile isFile)
{
    constexpr qsizetype longestPath = 4096; // of a file that the system can open
    if (name.size() <= longestPath && isFile(name)) {
        return PageLocation{name, {}};
    }
    int tries = 64; // nobody names a file like that
    for (qsizetype hash = name.lastIndexOf(u'#', longestPath); hash > 0 && tries > 0;
         hash = name.lastIndexOf(u'#', hash - 1), --tries) {
        if (isFile(name.first(hash))) {
            return PageLocation{name.first(hash), name.sliced(hash + 1)};
        }
    }
    return std::nullopt;
}
