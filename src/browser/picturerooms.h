// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QTextFormat>

#include <functional>
#include <vector>

class QTextDocument;
class QTextFrame;
class QTextTable;

/// How wide pictures may be at the places of a document so that nothing gets wider than its page: those that
/// stand side by side in a table share its width.
class PictureRooms {
public:
    using WantedWidth = std::function<qreal(const QTextImageFormat& picture)>;

    /// `wantedWidth` is that of a picture as its page asks for it, in pixels.
    PictureRooms(const QTextDocument& document, WantedWidth wantedWidth);

    /// In pixels, for the picture at a position of the text; without a page width, as much as it wants.
    [[nodiscard]] qreal roomAt(int position);
    /// The text has changed.
    void clear() { m_tables.clear(); }

private:
    struct Columns {
        qreal room = 0;            ///< of all columns
        std::vector<qreal> wanted; ///< by columns
        qreal sum = 0;             ///< of what is wanted
    };

    [[nodiscard]] qreal roomIn(QTextFrame* frame, int position);
    const Columns& columnsOf(QTextTable& table);

    const QTextDocument& m_document;
    WantedWidth m_wantedWidth;
    qreal m_pageWidth = 0;
    QHash<const QTextTable*, Columns> m_tables; ///< for that width
};
