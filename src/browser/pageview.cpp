// SPDX-License-Identifier: MIT
#include "browser/pageview.h"

#include "browser/pageresource.h"
#include "browser/rawlinks.h"
#include "browser/textcontrast.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextDocumentFragment>
#include <QTextFrame>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace {

constexpr int HintMargin = 32; // pixels
constexpr int PageMargin = 10; // pixels

} // namespace

PageView::PageView(QWidget* parent)
    : QTextBrowser(parent), m_style{QStringLiteral("monospace")}, m_fontFamily(font().family()),
      m_defaultFontSize(getFontSize())
{
    setOpenLinks(false);
    setAccessibleName(tr("Page"));
    document()->setDocumentMargin(PageMargin);
    restyle();
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        if (const QString href = RawLinks::target(link); !href.isEmpty()) {
            Q_EMIT linkActivated(href);
        }
    });
    connect(this, &QTextBrowser::highlighted, this,
            [this](const QUrl& link) { linkHighlighted(RawLinks::target(link)); });
}

void PageView::linkHighlighted(const QString& href)
{
    Q_EMIT linkHovered(href.isEmpty() ? QString() : linkTarget(href));
}

void PageView::setHint(const QString& hint)
{
    m_hint = hint;
    viewport()->update();
}

void PageView::showPage(const ShownPage& page)
{
    m_page = page;
    m_pendingPlace = 0;
    document()->setBaseUrl(m_page.file.isEmpty() ? QUrl() : QUrl::fromLocalFile(m_page.file));
    applyText();
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    Q_EMIT linkHovered({});
}

void PageView::clearPage()
{
    m_page = {};
    applyText();
}

void PageView::applyText()
{
    if (m_page.isHtml) {
        setHtml(m_page.text);
    } else {
        setPlainText(m_page.text);
    }
    m_anchors = RawLinks::protect(*document());
    repairContrast(*document(), palette(), m_style.shownLinkColor(palette()));
}

bool PageView::isBlank() const
{
    constexpr int shortPage = 256; // characters; longer pages are not looked at
    return document()->characterCount() < shortPage && document()->toPlainText().trimmed().isEmpty();
}

bool PageView::isShown(const QString& file) const
{
    const QFileInfo info(file);
    return !m_page.file.isEmpty() && m_page.file == info.absoluteFilePath() && m_page.size == info.size() &&
           m_page.modified == info.lastModified();
}

/// Anchors may be written with percent escapes in links, in the page, or in neither.
void PageView::scrollTo(const QString& anchor)
{
    if (anchor.isEmpty()) {
        verticalScrollBar()->setValue(0);
        return;
    }
    for (const auto& name : {anchor, QUrl::fromPercentEncoding(anchor.toUtf8()),
                             QString::fromLatin1(QUrl::toPercentEncoding(anchor))}) {
        if (m_anchors.contains(name)) {
            scrollToAnchor(name);
            return;
        }
    }
    verticalScrollBar()->setValue(0);
    if (anchor != u"top") {
        Q_EMIT noticed(tr("The page has no place named \"%1\"").arg(anchor));
    }
}

int PageView::place() const
{
    return verticalScrollBar()->value() == 0 ? 0 : cursorForPosition(QPoint(PageMargin, 0)).position();
}

void PageView::setPlace(int place)
{
    // A view that is not laid out yet has no range to scroll in.
    m_pendingPlace = isVisible() ? 0 : place;
    if (place <= 0) {
        verticalScrollBar()->setValue(0);
        return;
    }
    QTextCursor cursor(document());
    cursor.setPosition(std::min(place, document()->characterCount() - 1));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(cursor).top());
}

void PageView::setFontFamily(const QString& family)
{
    m_fontFamily = family;
    QFont changed = font();
    changed.setFamily(family);
    applyFont(changed);
}

int PageView::getFontSize() const
{
    return font().pointSize() == -1 ? font().pixelSize() : font().pointSize();
}

void PageView::setFontSize(int size)
{
    // Code has no size of its own, so it follows without a reload.
    QFont changed = font();
    if (changed.pointSize() == -1) {
        changed.setPixelSize(size);
    } else {
        changed.setPointSize(size);
    }
    applyFont(changed);
}

void PageView::applyFont(const QFont& changed)
{
    const int top = place();
    setFont(changed);
    setPlace(top);
}

void PageView::zoomBy(int step)
{
    setFontSize(std::max(1, getFontSize() + step));
}

void PageView::resetZoom()
{
    setFontSize(m_defaultFontSize);
}

void PageView::setFontFixedFamily(const QString& family)
{
    m_style.fixedFamily = family;
    restyle();
}

QColor PageView::getLinkColor() const
{
    return palette().color(QPalette::Active, QPalette::Link);
}

void PageView::setLinkColor(const QColor& color)
{
    m_style.hasOwnLinkColor = color != QApplication::palette(this).color(QPalette::Active, QPalette::Link);
    QPalette changed = palette();
    for (const auto group : {QPalette::Disabled, QPalette::Active, QPalette::Inactive}) {
        changed.setBrush(group, QPalette::Link, color);
    }
    setPalette(changed);
    restyle();
}

void PageView::setLinkUnderline(bool underline)
{
    m_style.linkUnderline = underline;
    restyle();
}

/// A style sheet takes effect when a text is set; the page shown is set again at its place.
void PageView::restyle()
{
    const QString sheet = pageSheet();
    if (sheet == m_appliedSheet) {
        return;
    }
    m_appliedSheet = sheet;
    document()->setDefaultStyleSheet(sheet);
    if (!m_page.text.isEmpty()) {
        const int top = place();
        applyText();
        setPlace(top);
    }
}

bool PageView::event(QEvent* event)
{
    // Moves over the page go to the viewport; one that arrives here is over the frame.
    if (event->type() == QEvent::MouseMove) {
        Q_EMIT linkHovered({});
    }
    return QTextBrowser::event(event);
}

bool PageView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave) {
        Q_EMIT linkHovered({});
    }
    return QTextBrowser::viewportEvent(event);
}

void PageView::showEvent(QShowEvent* event)
{
    QTextBrowser::showEvent(event);
    if (const int place = std::exchange(m_pendingPlace, 0); place > 0) {
        setPlace(place);
    }
}

void PageView::changeEvent(QEvent* event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_appliedSheet.clear();
        restyle();
    }
}

void PageView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() != Qt::ControlModifier) {
        QTextBrowser::wheelEvent(event);
    } else if (!m_page.text.isEmpty() && event->angleDelta().y() != 0) {
        zoomBy(event->angleDelta().y() > 0 ? 1 : -1);
    }
}

void PageView::contextMenuEvent(QContextMenuEvent* event)
{
    const QString href = RawLinks::target(QUrl(anchorAt(event->pos())));
    QMenu menu(this);
    if (!href.isEmpty()) {
        menu.addAction(tr("&Open Link"), this, [this, href] { Q_EMIT linkActivated(href); });
        menu.addAction(tr("Copy &Link Location"), this,
                       [this, href] { QApplication::clipboard()->setText(linkTarget(href)); });
        menu.addSeparator();
    }
    auto* copyAction = menu.addAction(tr("&Copy"), this, &QTextBrowser::copy);
    copyAction->setEnabled(textCursor().hasSelection());
    auto* selectAllAction = menu.addAction(tr("Select &All"), this, &QTextBrowser::selectAll);
    selectAllAction->setEnabled(!m_page.text.isEmpty());
    menu.exec(event->globalPos());
}

void PageView::paintEvent(QPaintEvent* event)
{
    QTextBrowser::paintEvent(event);
    if (!m_page.text.isEmpty() || m_hint.isEmpty()) {
        return;
    }
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(HintMargin, HintMargin, -HintMargin, -HintMargin),
                     Qt::AlignCenter | Qt::TextWordWrap, m_hint);
}

/// Plain text only: the rich form would carry the coded link targets.
QMimeData* PageView::createMimeDataFromSelection() const
{
    auto* text = new QMimeData;
    text->setText(textCursor().selection().toPlainText());
    return text;
}

QVariant PageView::loadResource(int type, const QUrl& name)
{
    return loadPageResource(type, document()->baseUrl().resolved(name));
}

/// All loading goes through showPage().
void PageView::doSetSource(const QUrl& /*url*/, QTextDocument::ResourceType /*type*/)
{
}
