// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagefile.h"
#include "pages/preparedpage.h"

#include <QFont>
#include <QPalette>
#include <QTextDocument>
#include <QTextFormat>
#include <QTextLayout>
#include <QUrl>

#include <vector>

class PagePictures;
class QPaintDevice;
class QPainter;
class QTextBlock;
class QTextCursor;

/// The page to print and the looks that the user gave it.
struct PrintablePage {
    PageText content; ///< HTML as prepared for the view, or plain text
    std::vector<PageLink> links;
    QUrl baseUrl;  ///< the page's file, which relative names start from
    QString title; ///< plain text
    QFont font;
    QString styleSheet; ///< rules that come before the page's own
};

/// A page laid out for sheets of paper: black on white with blue, underlined links, and nothing wider than a
/// sheet that can be made to fit.
class PrintDocument : public QTextDocument {
    Q_OBJECT

public:
    /// `device` is what will be painted on; `body` is the size of a sheet's text area in its pixels.
    PrintDocument(const PrintablePage& page, QPaintDevice* device, const QSizeF& body);

    /// The colours of print.
    [[nodiscard]] static QPalette paperPalette();

    /// Paints the strip of the text that is on one sheet, counted from 0, with the body's corner at the
    /// origin.
    void paintSheet(QPainter& painter, int sheet);

protected:
    /// Pictures and style sheets come from regular local files only.
    QVariant loadResource(int type, const QUrl& name) override;

private:
    struct Change {
        int position;
        int length;
        QTextCharFormat format;
        bool isWidePicture;
    };
    /// The last line that a paragraph has on the sheet before.
    struct Leftover {
        int sheet;
        QTextLine line;
    };

    void findLeftovers();
    void moveLeftovers(int sheet, qreal distance);
    void adapt(const PrintablePage& printed);
    void shrinkToFit(const QSizeF& body);
    [[nodiscard]] std::vector<Change> formatChanges(const std::vector<PageLink>& links) const;
    [[nodiscard]] static QTextCharFormat adapted(QTextCharFormat format, const QTextBlock& block,
                                                 const std::vector<PageLink>& links);
    void breakLongLines(QTextCursor& cursor);

    PagePictures* m_pictures; ///< owned by the document
    qreal m_scale = 1;
    std::vector<Leftover> m_leftovers; ///< ascending by sheet
};
