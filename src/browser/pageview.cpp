// SPDX-License-Identifier: MIT
#include "browser/pageview.h"

#include "browser/pageanchors.h"
#include "browser/pagebudget.h"
#include "browser/pagemenu.h"
#include "browser/pageresource.h"
#include "browser/selectedtext.h"
#include "browser/textcontrast.h"
#include "pages/linkcode.h"
#include "pages/pagepreparation.h"

#include <QAbstractTextDocumentLayout>
#include <QContextMenuEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QScrollBar>
#include <QTextFrame>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace {

constexpr int PageMargin = 10;    // pixels
constexpr int ReadingMargin = 20; // pixels

} // namespace

PageView::PageView(QWidget* parent)
    : StyledView(parent), m_pictures(PagePictures::install(*document(), PagePictures::Use::View))
{
    setOpenLinks(false);
    setAccessibleName(tr("Page"));
    document()->setUndoRedoEnabled(false);
    document()->setDocumentMargin(PageMargin);
    connect(&m_filler, &PageFiller::partAdded, this, &PageView::repairFrom);
    connect(this, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& link) { activateLink(hrefOf(link)); });
    connect(this, &QTextBrowser::highlighted, this,
            [this](const QUrl& link) { linkHighlighted(hrefOf(link)); });
}

void PageView::linkHighlighted(const QString& href)
{
    hoverLink(href.isEmpty() ? QString() : linkTarget(href));
}

void PageView::hoverLink(const QString& target)
{
    m_isLinkHovered = !target.isEmpty();
    Q_EMIT linkHovered(target);
}

/// The base class tells of links under the pointer only.
bool PageView::focusNextPrevChild(bool next)
{
    const bool isMoved = StyledView::focusNextPrevChild(next);
    const QString href = hrefOf(QUrl(textCursor().charFormat().anchorHref()));
    if (isMoved && hasFocus() && !href.isEmpty()) {
        linkHighlighted(href);
    }
    return isMoved;
}

/// The target of a link as the page wrote it; empty for none.
QString PageView::hrefOf(const QUrl& link) const
{
    const int number = linkNumber(link.toString());
    const auto& links = m_page.prepared.links;
    return number >= 0 && size_t(number) < links.size() ? links[size_t(number)].href : QString();
}

void PageView::activateLink(const QString& href)
{
    if (PageBudget::isWholePageLink(href)) {
        showWholePage();
    } else if (!href.isEmpty()) {
        Q_EMIT linkActivated(href);
    }
}

void PageView::showWholePage()
{
    const int top = place();
    m_page.isWhole = true;
    m_page.readRest();
    prepare();
    applyText();
    const QString anchor = std::exchange(m_anchorBeyond, {});
    anchor.isEmpty() ? setPlace(top) : scrollTo(anchor);
    Q_EMIT pageChanged();
}

void PageView::stopFilling()
{
    if (!isFilling()) {
        return;
    }
    auto& prepared = m_page.prepared;
    const QString notice =
        PageBudget::wholePageNotice(tr("The rest of the page was not loaded."), prepared.links);
    m_page.isStopped = true; // which stays so when the text is set again
    const qsizetype shown = m_filler.stop(notice);
    prepared.html = prepared.html.first(shown) + notice;
    std::erase_if(prepared.joints, [shown](qsizetype joint) { return joint > shown; });
}

void PageView::setShowsWholePages(bool isOn)
{
    m_showsWholePages = isOn;
    m_pictures->setUse(isOn ? PagePictures::Use::Print : PagePictures::Use::View);
}

void PageView::showPage(ShownPage page)
{
    m_page = std::move(page);
    m_pictures->clear();
    m_places.forget();
    m_anchorBeyond.clear();
    document()->setBaseUrl(m_page.file.isEmpty() ? QUrl() : QUrl::fromLocalFile(m_page.file));
    prepare();
    applyText();
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    if (m_isLinkHovered) {
        hoverLink({});
    }
    Q_EMIT pageChanged();
}

void PageView::clearPage()
{
    m_page = {};
    m_pictures->clear();
    applyText();
    Q_EMIT pageChanged();
}

void PageView::prepare()
{
    const bool isOwn = m_page.file.isEmpty();
    const auto pictureWidth = [this](const QString& file) { return m_pictures->widthOf(file); };
    m_colors = pageColors();
    m_page.isStopped = false;
    const PageContext context{m_page.file, pictureWidth, isOwn || m_page.isWhole || m_showsWholePages,
                              &m_styleSheets, m_colors};
    if (m_page.source.isHtml) {
        m_page.prepared =
            preparePage(m_page.source.text, context, isOwn ? Presentation::AsWritten : m_presentation);
        m_page.prepared.isReading = m_page.prepared.isReading || isOwn;
    } else {
        m_page.prepared = preparePlainText(m_page.source.text, context);
    }
    if (m_page.prepared.isBeginning) {
        PageBudget::addNotice(m_page.prepared);
        m_page.dropRest();
    }
}

void PageView::applyText()
{
    if (const QString sheet = pageSheet(palette()); sheet != m_appliedSheet) {
        m_appliedSheet = sheet;
        document()->setDefaultStyleSheet(sheet);
    }
    QTextCursor edit(document());
    edit.beginEditBlock();
    const QString first = m_filler.begin(m_page.prepared);
    if (m_page.prepared.html.isNull()) {
        setPlainText(m_page.source.text);
    } else {
        setHtml(first);
    }
    repairFrom(0);
    fitMargins();
    edit.endEditBlock();
    if (m_showsWholePages) {
        completePage();
    }
}

void PageView::repairFrom(int position)
{
    if (!m_page.prepared.isReading) {
        repairContrast(*document(), position, palette(), style().shownLinkColor(palette()));
    }
}

/// Keeps the lines of the reading view short enough to read, however wide the window is.
void PageView::fitMargins()
{
    const int least = m_page.prepared.isReading ? ReadingMargin : PageMargin;
    const int measure = m_lineWidth * fontMetrics().averageCharWidth();
    const int side = m_page.prepared.isReading ? std::max(least, (viewport()->width() - measure) / 2) : least;
    auto format = document()->rootFrame()->frameFormat();
    if (int(format.leftMargin()) != side || int(format.topMargin()) != least) {
        format.setMargin(least);
        format.setLeftMargin(side);
        format.setRightMargin(side);
        document()->rootFrame()->setFrameFormat(format);
    }
}

void PageView::setLineWidth(int characters)
{
    m_lineWidth = characters;
    fitMargins();
}

void PageView::setReadingView(bool isOn)
{
    const auto wanted = isOn ? Presentation::Reading : Presentation::AsWritten;
    if (wanted == m_presentation) {
        return;
    }
    m_presentation = wanted;
    if (!hasPage() || m_page.file.isEmpty() || !m_page.source.isHtml) {
        return;
    }
    // Positions differ between the presentations, names do not.
    const QString anchor = place() == 0 ? QString() : PageAnchors::before(*document(), place());
    prepare();
    applyText();
    scrollTo(anchor);
    Q_EMIT pageChanged();
}

bool PageView::isBlank() const
{
    constexpr int shortPage = 256; // characters; longer pages are not looked at
    return document()->characterCount() < shortPage && document()->toPlainText().trimmed().isEmpty();
}

void PageView::scrollTo(const QString& anchor)
{
    if (anchor.isEmpty()) {
        verticalScrollBar()->setValue(0);
        return;
    }
    if (const int position = m_places.goTo(anchor, m_page.prepared.html); position >= 0) {
        Q_EMIT arrived(position);
    } else if (m_page.prepared.isBeginning && m_page.hasInSource(anchor)) {
        m_anchorBeyond = anchor;
        Q_EMIT noticed(tr("The place named \"%1\" is not in the part of the page that is shown").arg(anchor));
    } else if (anchor != u"top") {
        Q_EMIT noticed(tr("The page has no place named \"%1\"").arg(anchor));
    }
}

void PageView::applyFont(const QFont& changed)
{
    const int top = place();
    setFont(changed);
    setPlace(top);
}

QString PageView::pageSheet(const QPalette& colors) const
{
    return m_page.prepared.isReading ? style().readingSheet(colors) : style().sheet(colors);
}

/// A style sheet takes effect when a text is set; the page shown is set again at its place.
void PageView::restyle()
{
    if (hasPage() && pageSheet(palette()) != m_appliedSheet) {
        const int top = place();
        // Colours of the page were made readable for others.
        if (m_colors != pageColors() && !m_page.isStopped) {
            prepare();
        }
        applyText();
        setPlace(top);
    }
}

PaletteColors PageView::pageColors() const
{
    const auto rgb = [](const QColor& color) { return uint32_t(color.rgb() & RGB_MASK); };
    return {rgb(palette().color(QPalette::Active, QPalette::Base)),
            rgb(palette().color(QPalette::Active, QPalette::Text)), rgb(style().shownLinkColor(palette())),
            chosen().linkColor};
}

bool PageView::event(QEvent* event)
{
    // Moves over the page go to the viewport; one that arrives here is over the frame.
    if (event->type() == QEvent::MouseMove) {
        hoverLink({});
    }
    return StyledView::event(event);
}

bool PageView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave) {
        hoverLink({});
    }
    return StyledView::viewportEvent(event);
}

void PageView::showEvent(QShowEvent* event)
{
    StyledView::showEvent(event);
    m_places.viewIsShown();
}

void PageView::changeEvent(QEvent* event)
{
    StyledView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fitMargins();
    }
    if (event->type() == QEvent::PaletteChange) {
        m_appliedSheet.clear();
        restyle();
    }
}

void PageView::resizeEvent(QResizeEvent* event)
{
    fitMargins();
    StyledView::resizeEvent(event);
}

/// The file of a picture that is shown smaller than it is and is no link; empty when there is none.
QString PageView::reducedPictureAt(const QPoint& point) const
{
    return m_pictures->reducedAt(point +
                                 QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value()));
}

void PageView::mouseMoveEvent(QMouseEvent* event)
{
    StyledView::mouseMoveEvent(event);
    const bool isOverPicture = !reducedPictureAt(event->pos()).isEmpty();
    if (isOverPicture != m_isOverPicture) {
        m_isOverPicture = isOverPicture;
        const bool isOverLink = !anchorAt(event->pos()).isEmpty();
        viewport()->setCursor(isOverPicture || isOverLink ? Qt::PointingHandCursor : Qt::ArrowCursor);
    }
}

void PageView::mouseReleaseEvent(QMouseEvent* event)
{
    const QString picture = event->button() == Qt::LeftButton && !textCursor().hasSelection()
                                ? reducedPictureAt(event->pos())
                                : QString();
    StyledView::mouseReleaseEvent(event);
    if (!picture.isEmpty()) {
        Q_EMIT pictureActivated(picture);
    }
}

void PageView::contextMenuEvent(QContextMenuEvent* event)
{
    PageMenu::Offers offers;
    if (const QString href = hrefOf(QUrl(anchorAt(event->pos()))); !href.isEmpty()) {
        offers.linkTarget = linkTarget(href);
        offers.openLink = [this, href] { activateLink(href); };
    }
    if (const QString picture = reducedPictureAt(event->pos()); !picture.isEmpty()) {
        offers.showPicture = [this, picture] { Q_EMIT pictureActivated(picture); };
    }
    PageMenu::open(*this, offers, event->globalPos());
}

void PageView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_End || event->matches(QKeySequence::SelectAll)) {
        completePage();
    }
    StyledView::keyPressEvent(event);
}

void PageView::paintEvent(QPaintEvent* event)
{
    StyledView::paintEvent(event);
    m_filler.goOn();
}

/// Plain text only: the rich form would carry the coded link targets.
QMimeData* PageView::createMimeDataFromSelection() const
{
    auto* text = new QMimeData;
    text->setText(selectedText(textCursor()));
    return text;
}

QVariant PageView::loadResource(int type, const QUrl& name)
{
    return type == QTextDocument::ImageResource ? QVariant(m_pictures->backdrop(name))
                                                : loadStyleSheet(document()->baseUrl().resolved(name));
}

/// All loading goes through showPage().
void PageView::doSetSource(const QUrl& /*url*/, QTextDocument::ResourceType /*type*/)
{
}
