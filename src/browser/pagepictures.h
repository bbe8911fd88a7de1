// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTextObjectInterface>

/// Lays out and paints the pictures of a document, none of them wider than the text around it can be.
class PagePictures : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    /// Takes over the pictures of a document, which becomes the owner.
    static PagePictures* install(QTextDocument& document);

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* document, int position,
                    const QTextFormat& format) override;

    /// The file of the picture at a point of the document that is shown smaller than it is and is no link;
    /// empty when there is none.
    [[nodiscard]] static QString reducedAt(const QTextDocument& document, const QPointF& point);

private:
    explicit PagePictures(QObject* parent) : QObject(parent) {}
};
