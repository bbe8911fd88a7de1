// SPDX-License-Identifier: MIT
#pragma once

struct ElementNotes;
struct HtmlNode;
struct Surroundings;

/// Whether an element belongs to the web site that a page was made for, and not to what the page says. All in
/// the element, and all behind it, has been looked at.
[[nodiscard]] bool isFurniture(const HtmlNode& element, const ElementNotes& notes,
                               const Surroundings& around);

/// Whether nobody sees an element, not even with a script's or a click's help.
[[nodiscard]] bool isHiddenElement(const HtmlNode& element, const ElementNotes& notes);

/// Of an element whose parts are all hidden until a script shows one of them: the one for this system, else
/// the default, else the first. Null for other elements.
[[nodiscard]] const HtmlNode* shownAlternative(const HtmlNode& element);
