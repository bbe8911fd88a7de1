// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QString;
class QTextDocument;

/// The named places of a page.
namespace PageAnchors {

/// Where the place of this name is, looked for from a position on; -1 when there is none.
[[nodiscard]] int find(const QTextDocument& document, const QString& name, int position);

/// The name that the page itself gave to the last place at or before a position; empty when there is none.
[[nodiscard]] QString before(const QTextDocument& document, int position);

/// The last name at or before a position that `isWanted`; empty when there is none in the ten thousand
/// paragraphs before.
[[nodiscard]] QString lastOf(const QTextDocument& document, int position,
                             const std::function<bool(const QString& name)>& isWanted);

} // namespace PageAnchors
