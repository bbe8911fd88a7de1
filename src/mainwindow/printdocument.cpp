// SPDX-License-Identifier: MIT
#include "mainwindow/printdocument.h"

#include "browser/pagepictures.h"
#include "browser/pageresource.h"
#include "pages/linkcode.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextFrame>
#include <QTextOption>
#include <QTextTable>

#include <algorithm>

namespace {

constexpr int LightestInk = 170; // lightness of the lightest text that is readable on white paper

constexpr qreal SmallestScale = 0.5; // what is still legible
constexpr qreal FarAway = 1e6;       // pixels, more than any sheet is high

const QString LinkStyle = QStringLiteral("a:link{color:#0000ff;text-decoration:underline}");

/// The target of a link that makes sense to a reader of a file; empty for names of pages, which mean
/// something to the viewer alone.
QString externalTarget(const QString& code, const std::vector<PageLink>& links)
{
    static const auto schemes = {u"http", u"https", u"ftp", u"mailto"};
    const int number = linkNumber(code);
    const QString href =
        number >= 0 && size_t(number) < links.size() ? links[size_t(number)].href : QString();
    const QString scheme = QUrl(href).scheme();
    const bool isKnown = std::any_of(schemes.begin(), schemes.end(), [&scheme](const char16_t* known) {
        return scheme == QStringView(known);
    });
    return isKnown ? href : QString();
}

/// Whether the block stands on a colour of its own; the page's background does not count.
bool hasBackground(const QTextBlock& block)
{
    bool found = block.blockFormat().hasProperty(QTextFormat::BackgroundBrush);
    const auto* root = block.document()->rootFrame();
    for (auto* frame = QTextCursor(block).currentFrame(); !found && frame != root;
         frame = frame->parentFrame()) {
        found = frame->frameFormat().hasProperty(QTextFormat::BackgroundBrush);
        if (const auto* table = qobject_cast<QTextTable*>(frame)) {
            const auto cell = table->cellAt(block.position());
            found = found || cell.format().hasProperty(QTextFormat::BackgroundBrush);
        }
    }
    return found;
}

/// Whether text was made for a dark page, which paper is not.
bool isPale(const QTextCharFormat& format)
{
    return !format.hasProperty(QTextFormat::BackgroundBrush) &&
           format.foreground().style() == Qt::SolidPattern &&
           format.foreground().color().lightness() > LightestInk;
}

/// Makes the picture at `position` the first of its line. A line that it does not fit into any more would be
/// as high as the picture all the same.
void startLine(QTextCursor& cursor, int position)
{
    cursor.setPosition(position);
    if (!cursor.atBlockStart() && cursor.document()->characterAt(position - 1) != QChar::LineSeparator) {
        cursor.insertText(QString(QChar::LineSeparator));
    }
}

} // namespace

PrintDocument::PrintDocument(const PrintablePage& page, QPaintDevice* device, const QSizeF& body)
    : m_pictures(PagePictures::install(*this, PagePictures::Use::Print))
{
    setUndoRedoEnabled(false);
    documentLayout()->setPaintDevice(device);
    setUseDesignMetrics(true);
    setDocumentMargin(0);
    setDefaultFont(page.font);
    QTextOption option = defaultTextOption();
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setDefaultTextOption(option);
    setBaseUrl(page.baseUrl);
    setDefaultStyleSheet(page.styleSheet + LinkStyle);
    setPageSize(body);
    QTextCursor edit(this);
    edit.beginEditBlock(); // laid out once only
    if (page.content.isHtml) {
        setHtml(page.content.text);
    } else {
        setPlainText(page.content.text);
    }
    setMetaInformation(DocumentTitle, page.title);
    adapt(page);
    edit.endEditBlock();
    shrinkToFit(body);
    findLeftovers();
}

/// Paper has no scroll bar: what is wider than a sheet all the same, such as tables of many columns, makes
/// the whole page smaller.
void PrintDocument::shrinkToFit(const QSizeF& body)
{
    const qreal width = size().width();
    if (width > body.width() + 1) {
        m_scale = std::max(SmallestScale, body.width() / width);
        setPageSize(body / m_scale);
    }
}

QPalette PrintDocument::paperPalette()
{
    QPalette palette{QColor(Qt::white)};
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Link, Qt::blue);
    return palette;
}

QVariant PrintDocument::loadResource(int type, const QUrl& name)
{
    return type == ImageResource ? QVariant(m_pictures->backdrop(name))
                                 : loadStyleSheet(baseUrl().resolved(name));
}

/// Changes what would be lost on paper.
void PrintDocument::adapt(const PrintablePage& printed)
{
    auto page = rootFrame()->frameFormat();
    page.clearBackground();
    rootFrame()->setFrameFormat(page);
    const auto changes = formatChanges(printed.links);
    QTextCursor cursor(this);
    // Backwards, because line ends are inserted.
    std::for_each(changes.crbegin(), changes.crend(), [&](const Change& change) {
        cursor.setPosition(change.position);
        cursor.setPosition(change.position + change.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(change.format);
        if (change.isWidePicture) {
            startLine(cursor, change.position);
        }
    });
    breakLongLines(cursor);
}

std::vector<PrintDocument::Change> PrintDocument::formatChanges(const std::vector<PageLink>& links) const
{
    std::vector<Change> changes;
    for (auto block = begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const auto fragment = it.fragment();
            const auto format = adapted(fragment.charFormat(), block, links);
            const bool isWide =
                format.isImageFormat() && m_pictures->isAsWideAsCanBe(fragment.position(), format);
            if (isWide || format != fragment.charFormat()) {
                changes.push_back({fragment.position(), fragment.length(), format, isWide});
            }
        }
    }
    return changes;
}

QTextCharFormat PrintDocument::adapted(QTextCharFormat format, const QTextBlock& block,
                                       const std::vector<PageLink>& links)
{
    if (!format.anchorHref().isEmpty()) {
        const QString target = externalTarget(format.anchorHref(), links);
        if (target.isEmpty()) {
            format.clearProperty(QTextFormat::AnchorHref);
        } else {
            format.setAnchorHref(target);
        }
    }
    if (isPale(format) && !hasBackground(block)) {
        format.setForeground(Qt::black);
    }
    return format;
}

void PrintDocument::breakLongLines(QTextCursor& cursor)
{
    for (auto block = begin(); block.isValid(); block = block.next()) {
        auto format = block.blockFormat();
        if (format.nonBreakableLines()) {
            format.setNonBreakableLines(false);
            cursor.setPosition(block.position());
            cursor.setBlockFormat(format);
        }
    }
}

void PrintDocument::paintSheet(QPainter& painter, int sheet)
{
    const QRectF strip(QPointF(0, sheet * pageSize().height()), pageSize());
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette = paperPalette();
    // Text that only touches the strip belongs to a neighbour.
    context.clip = strip.adjusted(0, 1, 0, -1);
    painter.save();
    painter.scale(m_scale, m_scale);
    painter.translate(0, -strip.top());
    painter.setClipRect(strip);
    moveLeftovers(sheet, -FarAway);
    documentLayout()->draw(&painter, context);
    moveLeftovers(sheet, FarAway);
    painter.restore();
}

/// A text layout paints one line more than the clip asks for, the one above. It is cut off, but readers of a
/// PDF file would find its text twice.
void PrintDocument::findLeftovers()
{
    for (auto block = begin(); block.isValid(); block = block.next()) {
        const auto* layout = block.layout();
        const qreal top = documentLayout()->blockBoundingRect(block).top();
        int last = 0;
        for (int i = 0; i < layout->lineCount(); ++i) {
            const auto line = layout->lineAt(i);
            const int sheet = int((top + line.y() + line.height() / 2) / pageSize().height());
            if (i > 0 && sheet != last) {
                m_leftovers.push_back({sheet, layout->lineAt(i - 1)});
            }
            last = sheet;
        }
    }
    std::stable_sort(m_leftovers.begin(), m_leftovers.end(),
                     [](const auto& a, const auto& b) { return a.sheet < b.sheet; });
}

void PrintDocument::moveLeftovers(int sheet, qreal distance)
{
    auto leftover = std::lower_bound(m_leftovers.begin(), m_leftovers.end(), sheet,
                                     [](const auto& a, int number) { return a.sheet < number; });
    for (; leftover != m_leftovers.end() && leftover->sheet == sheet; ++leftover) {
        leftover->line.setPosition(leftover->line.position() + QPointF(0, distance));
    }
}
