// SPDX-License-Identifier: MIT
#include "browser/helpbrowser.h"

#include "browser/externalbrowser.h"
#include "browser/imagewindow.h"
#include "browser/rawlinks.h"
#include "library/helplibrary.h"
#include "pages/links.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextDocumentFragment>
#include <QUrl>

#include <utility>

namespace {

constexpr int HintMargin = 32; // pixels
constexpr int PageMargin = 10; // pixels
// Larger style sheets are written for web browsers: rich text follows little of them and takes seconds over it.
constexpr qint64 LargestStyleSheet = 4096; // bytes

/// Pages without a file are told apart by their record, all others by their name.
bool isGenerated(const HelpContentsItem* item)
{
    return item != nullptr && item->target != EntryTarget::Page;
}

bool isSamePage(const HelpContentsItem* a, const HelpContentsItem* b)
{
    return a == b || (!isGenerated(a) && !isGenerated(b) && HelpLibrary::isOneFile(a->page, b->page));
}

/// Whether a page that has been set shows neither text nor pictures.
bool isBlank(const QTextDocument& document)
{
    constexpr int shortPage = 256; // characters; longer pages are not looked at
    return document.characterCount() < shortPage && document.toPlainText().trimmed().isEmpty();
}

/// Stands where a picture is missing: an empty frame.
QImage missingPicture()
{
    constexpr int size = 16;
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, size - 1, size - 1);
    painter.drawLine(0, 0, size - 1, size - 1);
    return image;
}

} // namespace

HelpBrowser::HelpBrowser(HelpLibrary& library, QWidget* parent) : QTextBrowser(parent), m_library(library)
{
    setOpenLinks(false);
    document()->setDocumentMargin(PageMargin);
    setAccessibleName(tr("Page"));
    connect(this, &QTextBrowser::anchorClicked, this, &HelpBrowser::followLink);
    connect(this, &QTextBrowser::highlighted, this,
            [this](const QUrl& link) { linkHighlighted(linkTarget(link)); });
}

void HelpBrowser::setHint(const QString& hint)
{
    m_hint = hint;
    viewport()->update();
}

void HelpBrowser::setSource(const QString& url)
{
    setSource(url, nullptr);
}

void HelpBrowser::setSource(HelpContentsItem* item)
{
    if (item == nullptr) {
        setSource(QString());
    } else {
        setSource(item->page, item);
    }
}

void HelpBrowser::setSource(const QString& url, HelpContentsItem* item)
{
    open(url, item, {});
}

void HelpBrowser::setSource(const HelpIndexItem& keyword)
{
    auto* record = keyword.hasPage ? nullptr : m_library.getPage(keyword);
    open(keyword.link, record, {keyword.namedIn, keyword.namedInLine});
}

void HelpBrowser::open(const QString& url, HelpContentsItem* item, const NamedBy& namedBy)
{
    if (!isGenerated(item) && isUrlShow(url)) {
        return;
    }
    display(url, item != nullptr ? item : m_library.findPage(url), namedBy);
    if (isCurrent(url, item)) {
        return;
    }
    const bool hadPage = m_currentLink != nullptr && !m_currentLink->page.trimmed().isEmpty();
    if (item == nullptr) {
        item = m_library.getPage(url);
        if (item->namedIn == nullptr) {
            item->namedIn = namedBy.file;
            item->namedInLine = namedBy.line;
        }
    }
    if (!item->title.isNull()) {
        Q_EMIT captionChanged(item->title);
    }
    record(item, hadPage);
    announce();
}

bool HelpBrowser::isCurrent(const QString& url, const HelpContentsItem* item) const
{
    if (isGenerated(item) || isGenerated(m_currentLink)) {
        return item == m_currentLink;
    }
    return HelpLibrary::isOneFile(m_currentLink == nullptr ? QString() : m_currentLink->page, url);
}

void HelpBrowser::record(HelpContentsItem* item, bool hadPage)
{
    if (m_homeLink == nullptr) {
        m_homeLink = item;
    }
    if (!m_stepping) {
        if (hadPage) {
            m_backLinks.push_back(m_currentLink);
            Q_EMIT backEnabled(true);
        }
        m_forwardLinks.clear();
        Q_EMIT forwardEnabled(false);
    }
    m_currentLink = item;
}

void HelpBrowser::announce()
{
    const auto* row = m_currentLink->listViewItem;
    Q_EMIT sourceEmpty(m_shown.text.isEmpty());
    Q_EMIT upEnabled(row != nullptr && row->parent != nullptr);
    Q_EMIT homeEnabled(!isSamePage(m_currentLink, m_homeLink));
    Q_EMIT syncEnabled(row != nullptr);
}

bool HelpBrowser::isUrlShow(const QString& url)
{
    if (isPicture(url)) {
        ImageWindow window(url);
        window.setWindowIcon(this->window()->windowIcon());
        window.exec();
        return true;
    }
    if (isRemoteName(url)) {
        if (!openInExternalBrowser(url)) {
            QMessageBox::information(this, tr("Load help file error"),
                                     tr("On-line Help can display local file only."), QMessageBox::Ok,
                                     QMessageBox::NoButton);
        }
        return true;
    }
    if (!url.isEmpty()) {
        return false;
    }
    clearPage();
    Q_EMIT sourceEmpty(true);
    return true;
}

void HelpBrowser::backward()
{
    step(m_backLinks, m_forwardLinks);
}

void HelpBrowser::forward()
{
    step(m_forwardLinks, m_backLinks);
}

void HelpBrowser::step(std::vector<HelpContentsItem*>& from, std::vector<HelpContentsItem*>& to)
{
    if (from.empty()) {
        return;
    }
    to.push_back(m_currentLink);
    {
        const QScopedValueRollback stepping(m_stepping, true);
        setSource(from.back());
    }
    if (!from.empty()) {
        from.pop_back();
    }
    Q_EMIT backEnabled(!m_backLinks.empty());
    Q_EMIT forwardEnabled(!m_forwardLinks.empty());
}

void HelpBrowser::home()
{
    if (m_homeLink == nullptr || m_homeLink->page.trimmed().isEmpty()) {
        return;
    }
    m_currentLink = nullptr;
    m_forwardLinks.clear();
    Q_EMIT forwardEnabled(false);
    setSource(m_homeLink);
}

void HelpBrowser::clearLinks()
{
    m_currentLink = nullptr;
    m_homeLink = nullptr;
    m_backLinks.clear();
    m_forwardLinks.clear();
    m_shown.targets.clear();
    Q_EMIT backEnabled(false);
    Q_EMIT forwardEnabled(false);
    Q_EMIT homeEnabled(false);
    Q_EMIT syncEnabled(false);
}

void HelpBrowser::display(const QString& url, const HelpContentsItem* item, const NamedBy& namedBy)
{
    if (isGenerated(item)) {
        auto generated = makeRecordPage(m_library, *item);
        displayBuiltin(generated.page, std::move(generated.targets));
        return;
    }
    const QString scheme = foreignScheme(url);
    if (!scheme.isEmpty() && !QFileInfo::exists(url)) {
        const QString reason = tr("Links of the kind \"%1:\" are not followed.").arg(scheme);
        displayBuiltin(makeErrorPage(url, reason, {}, namedBy), {});
        return;
    }
    displayFile(url, item, namedBy);
}

void HelpBrowser::displayFile(const QString& url, const HelpContentsItem* item, const NamedBy& namedBy)
{
    const auto location = locatePage(url);
    if (isShown(location.file)) {
        scrollTo(location.anchor);
        return;
    }
    const QFileInfo info(location.file);
    const auto page = readPage(location.file);
    if (!page.ok()) {
        displayError(page.error(), url, item, namedBy);
        return;
    }
    Shown shown;
    shown.file = info.absoluteFilePath();
    shown.modified = info.lastModified();
    shown.size = info.size();
    shown.text = page.value().text;
    displayText(std::move(shown), page.value().isHtml);
    if (isBlank(*document())) {
        displayError(PageError::NothingToShow, url, item, namedBy);
        return;
    }
    scrollTo(location.anchor);
}

void HelpBrowser::displayError(PageError error, const QString& url, const HelpContentsItem* item,
                               const NamedBy& namedBy)
{
    const bool isKnown = item != nullptr && item->namedIn != nullptr;
    const NamedBy origin = isKnown ? NamedBy{item->namedIn, item->namedInLine} : namedBy;
    displayBuiltin(makeErrorPage(url, describe(error), item == nullptr ? QString() : item->title, origin), {});
}

bool HelpBrowser::isShown(const QString& file) const
{
    const QFileInfo info(file);
    return !m_shown.file.isEmpty() && m_shown.file == info.absoluteFilePath() &&
           m_shown.size == info.size() && m_shown.modified == info.lastModified();
}

void HelpBrowser::displayBuiltin(const BuiltinPage& page, std::vector<RecordLink> targets)
{
    Shown shown;
    shown.text = page.toHtml();
    shown.targets = std::move(targets);
    displayText(std::move(shown), true);
}

void HelpBrowser::displayText(Shown shown, bool isHtml)
{
    m_shown = std::move(shown);
    document()->setBaseUrl(m_shown.file.isEmpty() ? QUrl() : QUrl::fromLocalFile(m_shown.file));
    if (isHtml) {
        setHtml(m_shown.text);
    } else {
        setPlainText(m_shown.text);
    }
    m_shown.anchors = RawLinks::protect(*document());
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    Q_EMIT linkHovered({});
}

void HelpBrowser::clearPage()
{
    m_shown = {};
    setPlainText({});
}

/// Anchors may be written with percent escapes in links, in the page, or in neither.
void HelpBrowser::scrollTo(const QString& anchor)
{
    if (anchor.isEmpty()) {
        verticalScrollBar()->setValue(0);
        return;
    }
    for (const auto& name : {anchor, QUrl::fromPercentEncoding(anchor.toUtf8()),
                             QString::fromLatin1(QUrl::toPercentEncoding(anchor))}) {
        if (m_shown.anchors.contains(name)) {
            scrollToAnchor(name);
            return;
        }
    }
    verticalScrollBar()->setValue(0);
    if (anchor != u"top") {
        Q_EMIT noticed(tr("The page has no place named \"%1\"").arg(anchor));
    }
}

void HelpBrowser::followLink(const QUrl& link)
{
    if (const auto* target = recordLink(link)) {
        // The target is copied: showing a page replaces the table it stands in.
        const RecordLink copy = *target;
        if (auto* const* item = std::get_if<HelpContentsItem*>(&copy)) {
            setSource(*item);
        } else {
            setSource(**std::get_if<HelpIndexItem*>(&copy));
        }
        return;
    }
    const QString target = linkTarget(link);
    if (!target.isEmpty()) {
        setSource(target);
    }
}

/// The name that a link of the page shown leads to.
QString HelpBrowser::linkTarget(const QUrl& link) const
{
    if (const auto* target = recordLink(link)) {
        auto* const* item = std::get_if<HelpContentsItem*>(target);
        return item != nullptr ? (*item)->page : (*std::get_if<HelpIndexItem*>(target))->link;
    }
    const QString href = RawLinks::target(link);
    return href.isEmpty() ? QString() : resolveLink(m_shown.file, href);
}

const RecordLink* HelpBrowser::recordLink(const QUrl& link) const
{
    static const QString scheme = QStringLiteral("item:");
    const QString href = RawLinks::target(link);
    if (m_shown.targets.empty() || !href.startsWith(scheme)) {
        return nullptr;
    }
    bool ok = false;
    const auto number = size_t(href.sliced(scheme.size()).toULongLong(&ok));
    return ok && number < m_shown.targets.size() ? &m_shown.targets[number] : nullptr;
}

void HelpBrowser::linkHighlighted(const QString& href)
{
    Q_EMIT linkHovered(href);
}

bool HelpBrowser::event(QEvent* event)
{
    // Moves over the page go to the viewport; one that arrives here is over the frame.
    if (event->type() == QEvent::MouseMove) {
        Q_EMIT linkHovered({});
    }
    return QTextBrowser::event(event);
}

bool HelpBrowser::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave) {
        Q_EMIT linkHovered({});
    }
    return QTextBrowser::viewportEvent(event);
}

void HelpBrowser::contextMenuEvent(QContextMenuEvent* event)
{
    const QUrl link(anchorAt(event->pos()));
    const QString target = linkTarget(link);
    QMenu menu(this);
    if (!target.isEmpty()) {
        menu.addAction(tr("&Open Link"), this, [this, link] { followLink(link); });
        menu.addAction(tr("Copy &Link Location"), this,
                       [target] { QApplication::clipboard()->setText(target); });
        menu.addSeparator();
    }
    auto* copyAction = menu.addAction(tr("&Copy"), this, &QTextBrowser::copy);
    copyAction->setEnabled(textCursor().hasSelection());
    auto* selectAllAction = menu.addAction(tr("Select &All"), this, &QTextBrowser::selectAll);
    selectAllAction->setEnabled(!m_shown.text.isEmpty());
    menu.exec(event->globalPos());
}

void HelpBrowser::paintEvent(QPaintEvent* event)
{
    QTextBrowser::paintEvent(event);
    if (!m_shown.text.isEmpty() || m_hint.isEmpty()) {
        return;
    }
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(HintMargin, HintMargin, -HintMargin, -HintMargin),
                     Qt::AlignCenter | Qt::TextWordWrap, m_hint);
}

/// Plain text only: the rich form would carry the coded link targets.
QMimeData* HelpBrowser::createMimeDataFromSelection() const
{
    auto* text = new QMimeData;
    text->setText(textCursor().selection().toPlainText());
    return text;
}

/// Pictures and style sheets come from regular local files only.
QVariant HelpBrowser::loadResource(int type, const QUrl& name)
{
    const QUrl url = document()->baseUrl().resolved(name);
    const QString file = url.isLocalFile() && url.host().isEmpty() ? url.toLocalFile() : QString();
    if (type == QTextDocument::ImageResource) {
        const QImage picture = isPicture(file) ? QImage(file) : QImage();
        return picture.isNull() ? missingPicture() : picture;
    }
    const bool isSmall = QFileInfo(file).isFile() && QFileInfo(file).size() <= LargestStyleSheet;
    const auto sheet = isSmall ? readPage(file) : Result<PageText, PageError>(PageError::TooLarge);
    // Never a null value: the document would then open the file by itself, whatever it is.
    return sheet.ok() ? sheet.value().text : QString();
}

/// All loading goes through this class's own setSource().
void HelpBrowser::doSetSource(const QUrl& /*url*/, QTextDocument::ResourceType /*type*/)
{
}
