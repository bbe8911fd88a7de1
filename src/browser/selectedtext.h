// SPDX-License-Identifier: MIT
#pragma once

class QString;
class QTextCursor;

/// The selected text as one sees it: a line for each paragraph, the cells of a table's row separated by tabs,
/// nothing for pictures.
[[nodiscard]] QString selectedText(const QTextCursor& selection);
