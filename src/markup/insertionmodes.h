// SPDX-License-Identifier: MIT
#pragma once

class Construction;
struct HtmlToken;

/// What tokens do to a tree in each mode, by the rules of HTML 5. A step is done, or the token is to be
/// looked at again in the mode that the step has chosen.
namespace InsertionModes {

enum class Step : bool { Done, Again };

[[nodiscard]] Step initial(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step beforeHtml(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step beforeHead(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inHead(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inHeadNoscript(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step afterHead(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inBody(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inText(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inTable(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inCaption(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inColumnGroup(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inTableBody(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inRow(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inCell(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inSelect(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inSelectInTable(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inTemplate(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step inFrameset(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step afterFrameset(Construction& tree, const HtmlToken& token);
[[nodiscard]] Step endInBody(Construction& tree, const HtmlToken& token);
/// Of drawings and formulas, whatever the mode.
[[nodiscard]] Step inForeignContent(Construction& tree, const HtmlToken& token);
[[nodiscard]] bool isForeign(const Construction& tree, const HtmlToken& token);
/// Begins a drawing or a formula.
void insertForeign(Construction& tree, const HtmlToken& token, bool isFormula);

/// By the tree's mode.
[[nodiscard]] Step step(Construction& tree, const HtmlToken& token);

} // namespace InsertionModes
