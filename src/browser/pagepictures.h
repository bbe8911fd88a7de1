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

    /// Whether the picture at a position is shown smaller than it is.
    [[nodiscard]] static bool isReduced(const QTextDocument& document, int position);

private:
    explicit PagePictures(QObject* parent) : QObject(parent) {}
};
