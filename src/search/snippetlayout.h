// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/searchanswer.h"

#include <QTextLayout>

class QFont;

/// Lays out a snippet with its marks in bold in at most `lines` lines of `width` pixels. When the first mark
/// would not be among them, the snippet is shown from shortly before it.
class SnippetLayout {
public:
    SnippetLayout(const SearchHit& hit, const QFont& font, int width, int lines);

    [[nodiscard]] int height() const; ///< pixels
    void draw(QPainter* painter, const QPoint& topLeft) const { m_layout.draw(painter, topLeft); }

private:
    void setText(const QString& text, const std::vector<TextRange>& marks, qsizetype from);
    /// The end of the last line that there is room for.
    int layOut(int width, int lines);

    QTextLayout m_layout;
};
