// SPDX-License-Identifier: MIT
#pragma once

class QColor;
class QPalette;
class QTextDocument;

/// Makes text readable that stands on a ground of the page's own while its colour is the viewer's: a page
/// that sets only one of the two cannot know the other. Colours that the page sets stay.
/// Looks at the text from a position on.
void repairContrast(QTextDocument& document, int position, const QPalette& palette, const QColor& linkColor);
