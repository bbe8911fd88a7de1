// SPDX-License-Identifier: MIT
#pragma once

struct ElementNotes;
struct HtmlNode;
struct Surroundings;

/// Whether a link says that it leads to the page before or behind, to one above, or to the first.
[[nodiscard]] bool leadsThroughSite(const HtmlNode& link);

/// Whether an element holds what helps to use a page in a browser and says nothing: the way to the pages
/// around it, a mark that leads to the place where it stands, numbers of the lines beside it. All in the
/// element, and all behind it, has been looked at.
[[nodiscard]] bool isBrowserAid(const HtmlNode& element, const ElementNotes& notes,
                                const Surroundings& around);
