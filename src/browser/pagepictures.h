// SPDX-License-Identifier: MIT
#pragma once

#include "browser/picturerooms.h"
#include "browser/picturestore.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTextObjectInterface>
#include <QTimer>

/// Lays out and paints the pictures of a document, none of them wider than the text around it can be, nor
/// higher than a sheet. They are decoded when they are painted; a view is not held by many of them at once.
class PagePictures : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    enum class Use {
        View, ///< pictures that take long come one after the other
        Print ///< all are painted at once, and sharp on paper
    };
    static constexpr qint64 LargestBackdrops = 4'000'000; ///< pixels of a page's, together

    /// Takes over the pictures of a document, which becomes the owner.
    static PagePictures* install(QTextDocument& document, Use use);
    void setUse(Use use) { m_use = use; }

    /// The document is to show another page.
    void clear();
    /// Width of the picture in a file in pixels; 0 when it cannot be shown.
    [[nodiscard]] int widthOf(const QString& file) { return qMax(0, m_store.size(file).width()); }
    /// Whether the picture at a position of the text is as wide as can be.
    [[nodiscard]] bool isAsWideAsCanBe(int position, const QTextFormat& format);
    /// The file of the picture at a point of the document that is shown smaller than it is and is no link;
    /// empty when there is none.
    [[nodiscard]] QString reducedAt(const QPointF& point);

    /// A picture that text stands on; one transparent pixel when it cannot be shown.
    [[nodiscard]] QImage backdrop(const QUrl& url);

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* document, int position,
                    const QTextFormat& format) override;

private:
    PagePictures(QTextDocument& document, Use use);
    [[nodiscard]] QString fileAt(const QUrl& url) const;
    [[nodiscard]] QString fileOf(const QTextFormat& format) const;
    [[nodiscard]] QSizeF wantedSize(const QTextFormat& format);
    [[nodiscard]] QSizeF shownSize(int position, const QTextFormat& format);
    [[nodiscard]] bool mayDecode();
    void finishTurn();

    QTextDocument& m_document;
    Use m_use;
    PictureStore m_store;
    PictureRooms m_rooms;
    QElapsedTimer m_decoding; ///< since the first picture that was decoded in this turn of the event loop
    QTimer m_nextTurn;
    bool m_isIncomplete = false; ///< pictures are left for the next turn
    int m_turns = 0;             ///< that left some, one after the other
    qint64 m_backdropArea = 0;   ///< pixels
};
