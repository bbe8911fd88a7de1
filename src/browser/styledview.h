// SPDX-License-Identifier: MIT
#pragma once

#include "browser/pagestyle.h"

#include <QTextBrowser>

/// A page view's display settings: fonts, zoom, link colours, and what it says while it has no page.
class StyledView : public QTextBrowser {
    Q_OBJECT

public:
    explicit StyledView(QWidget* parent);

    [[nodiscard]] virtual bool hasPage() const = 0;
    /// The text painted while no page is shown.
    void setHint(const QString& hint);
    [[nodiscard]] const QString& hint() const { return m_hint; }

    /// What a person chose. All else is the desktop's and follows it.
    struct Chosen {
        bool family = false;
        bool size = false;
        bool fixedFamily = false;
        bool linkColor = false;
        bool linkUnderline = false;
    };
    /// What was set since the view was made; resetZoom() takes the choice of a size back.
    [[nodiscard]] const Chosen& chosen() const { return m_chosen; }

    [[nodiscard]] QString getFontFamily() const { return m_chosen.family ? m_fontFamily : font().family(); }
    void setFontFamily(const QString& family);
    /// In points, or in pixels when the font is sized in pixels.
    [[nodiscard]] int getFontSize() const;
    void setFontSize(int size);
    /// Family of preformatted text and code.
    [[nodiscard]] QString getFontFixedFamily() const { return m_style.fixedFamily; }
    void setFontFixedFamily(const QString& family);
    [[nodiscard]] QColor getLinkColor() const;
    void setLinkColor(const QColor& color);
    [[nodiscard]] bool getLinkUnderline() const { return m_style.linkUnderline; }
    void setLinkUnderline(bool underline);

    /// Takes all choices back: fonts and links look as the desktop says.
    void resetChoices();

    /// One step of the font size, up or down; code follows in proportion.
    void zoomIn() { zoomBy(1); }
    void zoomOut() { zoomBy(-1); }
    /// Back to the toolkit's own font size.
    void resetZoom();

protected:
    [[nodiscard]] const PageStyle& style() const { return m_style; }
    /// The settings that a style sheet carries are others now.
    virtual void restyle() = 0;
    /// Lays the text out in another font.
    virtual void applyFont(const QFont& changed) = 0;

    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void zoomBy(int step);
    void applyChosenFont();

    PageStyle m_style;
    Chosen m_chosen;
    QString m_fontFamily; ///< if chosen, as is the size
    int m_fontSize = 0;
    int m_wheelAngle = 0; ///< turned since the last step of the zoom, in eighths of a degree
    QString m_hint;
};
