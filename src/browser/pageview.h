// SPDX-License-Identifier: MIT
#pragma once

#include "browser/pagefiller.h"
#include "browser/pagepictures.h"
#include "browser/pageplaces.h"
#include "browser/shownpage.h"
#include "browser/styledview.h"
#include "pages/pagecontext.h"
#include "pages/pagesheets.h"

/// Shows the text of one page and follows the display settings. Knows nothing of help sets; what a link means
/// is for others to decide.
class PageView : public StyledView {
    Q_OBJECT

public:
    explicit PageView(QWidget* parent);

    [[nodiscard]] const ShownPage& page() const { return m_page; }
    [[nodiscard]] bool hasPage() const override { return !m_page.source.text.isEmpty(); }

    /// Whether pages that take long to show are shown as a whole at once.
    void setShowsWholePages(bool isOn);
    /// A long page is shown part by part; this makes the document hold all of it now.
    void completePage() { m_filler.complete(); }
    [[nodiscard]] bool isFilling() const { return !m_filler.isComplete(); }
    /// Leaves out the rest of a long page that is not there yet, and says so at its end.
    void stopFilling();

    /// Goes to a named place of the page; an empty name means its top.
    void scrollTo(const QString& anchor);
    /// Position in the text of what stands at the top of the view.
    [[nodiscard]] int place() const { return m_places.place(); }
    void setPlace(int place) { m_places.setPlace(place); }

    /// Whether pages made for web browsers are laid out by the viewer's own rules; otherwise all pages are
    /// shown as they were written.
    [[nodiscard]] bool isReadingView() const { return m_presentation == Presentation::Reading; }
    void setReadingView(bool isOn);

    /// How long the lines of the reading view get at most, in characters of average width.
    [[nodiscard]] int lineWidth() const { return m_lineWidth; }
    void setLineWidth(int characters);
    static constexpr int UsualLineWidth = 100;

    /// The rules for the page shown that the display settings make; `colors` are those of what it is shown
    /// on.
    [[nodiscard]] QString pageSheet(const QPalette& colors) const;

Q_SIGNALS:
    /// The user activated a link; `href` as the page wrote it.
    void linkActivated(const QString& href);
    /// Target of the link under the pointer or the keyboard, as linkTarget() gives it; empty when there is
    /// none.
    void linkHovered(const QString& target);
    /// The user wants to see a picture of the page by itself.
    void pictureActivated(const QString& file);
    /// Another page, or none, is shown.
    void pageChanged();
    /// The view has gone to a named place at this position of the text.
    void arrived(int position);
    /// Something about the page just shown that the user should know.
    void noticed(const QString& text);

protected Q_SLOTS:
    /// The pointer or the keyboard is over a link, as written in the page; empty when over none.
    virtual void linkHighlighted(const QString& href);

protected:
    /// Prepares the page and shows it from its top.
    void showPage(ShownPage page);
    void clearPage();
    /// The page has to be read again when it is asked for.
    void dropPage() { m_page.state.reset(); }
    /// Whether the page shown has neither text nor pictures.
    [[nodiscard]] bool isBlank() const;
    /// What a link, as written in the page shown, leads to, for the user to read.
    [[nodiscard]] virtual QString linkTarget(const QString& href) const = 0;

    void restyle() override;
    void applyFont(const QFont& changed) override;
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    bool viewportEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
    QVariant loadResource(int type, const QUrl& name) override;
    void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override;

private:
    void showWholePage();
    void activateLink(const QString& href);
    void hoverLink(const QString& target);
    void prepare();
    [[nodiscard]] PaletteColors pageColors() const;
    void applyText();
    void repairFrom(int position);
    void fitMargins();
    [[nodiscard]] QString hrefOf(const QUrl& link) const;
    [[nodiscard]] QString reducedPictureAt(const QPoint& point) const;

    ShownPage m_page;
    PagePictures* m_pictures; ///< owned by the document
    Presentation m_presentation = Presentation::Reading;
    QString m_appliedSheet;
    PaletteColors m_colors; ///< that the page was prepared for
    QString m_anchorBeyond; ///< asked for, but in what is not shown of the page
    int m_lineWidth = UsualLineWidth;
    bool m_isOverPicture = false;
    bool m_isLinkHovered = false;
    bool m_showsWholePages = false;
    StyleSheets m_styleSheets;
    PageFiller m_filler{*document()};
    PagePlaces m_places{*this, m_filler};
};
