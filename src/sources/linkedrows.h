// SPDX-License-Identifier: MIT
#pragma once

#include "sources/folderfiles.h"

/// What a page has of contents.
enum class ContentsScope {
    Lists, ///< only lists that say of themselves that they are contents
    Page,  ///< these, else all lists of links of its text, else all links
};

/// The rows that the lists of links of a page make: levels by how lists are nested in each other, with the
/// headings above them as books. Each page has one row. `html` is all of the page.
[[nodiscard]] std::vector<FolderRow> linkedRows(const FolderFiles& files, const QString& page,
                                                const QByteArray& html, ContentsScope scope);

/// The keywords of a page that is an index: of each entry of its lists what stands before the links, else the
/// first link itself.
void addIndexPage(const FolderFiles& files, const QString& page, std::vector<FolderKeyword>& keywords);
