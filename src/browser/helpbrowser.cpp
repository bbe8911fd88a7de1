// SPDX-License-Identifier: MIT
#include "browser/helpbrowser.h"

#include "browser/externalbrowser.h"
#include "browser/imagewindow.h"
#include "browser/messages.h"
#include "browser/picturefile.h"
#include "library/helplibrary.h"
#include "library/packedpages.h"
#include "pages/links.h"

#include <QFileInfo>
#include <QScopedValueRollback>
#include <QTimer>

#include <utility>

namespace {

/// Pages without a file are told apart by their record, all others by their name.
bool isGenerated(const HelpContentsItem* item)
{
    return item != nullptr && item->target != EntryTarget::Page;
}

bool isSamePage(const HelpContentsItem* a, const HelpContentsItem* b)
{
    return a == b || (!isGenerated(a) && !isGenerated(b) && HelpLibrary::isOneFile(a->page(), b->page()));
}

} // namespace

HelpBrowser::HelpBrowser(HelpLibrary& library, QWidget* parent) : PageView(parent), m_library(library)
{
    connect(this, &PageView::linkActivated, this, &HelpBrowser::followLink);
    connect(this, &PageView::pictureActivated, this, [this](const QString& file) { setSource(file); });
}

HelpBrowser::~HelpBrowser()
{
    // They have no parent.
    for (auto* picture : std::exchange(m_pictures, {})) {
        picture->disconnect(this);
        delete picture;
    }
}

void HelpBrowser::setSource(const QString& url)
{
    setSource(url, nullptr);
}

void HelpBrowser::setSource(HelpContentsItem* item)
{
    setSource(item == nullptr ? QString() : item->page(), item);
}

void HelpBrowser::setSource(const QString& url, HelpContentsItem* item)
{
    open(url, item, {});
}

void HelpBrowser::setSource(const HelpIndexItem& keyword)
{
    auto* record = keyword.hasPage() ? nullptr : m_library.getPage(keyword);
    open(keyword.link(), record, {keyword.source->fileName, keyword.namedInLine});
}

void HelpBrowser::open(const QString& url, HelpContentsItem* item, const NamedBy& namedBy)
{
    if (!isGenerated(item) && isUrlShow(url)) {
        return;
    }
    const int leftPlace = place();
    display(url, item != nullptr ? item : m_library.findPage(url), namedBy);
    if (!m_stepping && isCurrent(url, item)) {
        findCurrentAgain(url);
        return;
    }
    if (item == nullptr) {
        item = m_library.getPage(url, namedBy.line > 0 ? namedBy.file : QString(), namedBy.line);
    }
    if (!item->title().isNull()) {
        Q_EMIT captionChanged(item->title());
    }
    if (!m_stepping) {
        record(item, leftPlace);
    }
    announce();
}

/// The help set of the page shown may have been opened since.
void HelpBrowser::findCurrentAgain(const QString& url)
{
    const auto* current = m_history.current();
    if (current == nullptr || isGenerated(current) || current->listViewItem != nullptr ||
        m_library.findRow(url) == nullptr) {
        return;
    }
    auto* item = m_library.getPage(url);
    m_history.replace(item);
    Q_EMIT captionChanged(item->title());
    announce();
}

bool HelpBrowser::isCurrent(const QString& url, const HelpContentsItem* item) const
{
    const auto* current = m_history.current();
    if (isGenerated(item) || isGenerated(current)) {
        return item == current;
    }
    return HelpLibrary::isOneFile(current == nullptr ? QString() : current->page(), url);
}

void HelpBrowser::record(HelpContentsItem* item, int leftPlace)
{
    const bool isKept = !m_isPassing && m_history.enter(item, leftPlace);
    if (m_isPassing) {
        m_history.replace(item);
    }
    if (isKept) {
        Q_EMIT backEnabled(true);
    }
    Q_EMIT forwardEnabled(false);
}

void HelpBrowser::announce()
{
    m_isLost = false;
    auto* current = m_history.current();
    const auto* row = current->listViewItem;
    Q_EMIT sourceEmpty(!hasPage());
    Q_EMIT upEnabled(row != nullptr && row->parent != nullptr);
    Q_EMIT homeEnabled(!isSamePage(current, m_history.home()));
    Q_EMIT syncEnabled(row != nullptr);
    Q_EMIT currentChanged(current);
}

bool HelpBrowser::isUrlShow(const QString& url)
{
    if (isPicture(url)) {
        showPicture(url);
        return true;
    }
    // A local file is never handed to another program, whatever its name.
    if (isRemoteName(url) && !isPageFile(url) && !QFileInfo::exists(url)) {
        if (!openInExternalBrowser(url)) {
            openMessage(QMessageBox::Information, tr("Load help file error"),
                        tr("On-line Help can display local file only."), this);
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

/// Each picture has one window, which comes after the viewer's own.
void HelpBrowser::showPicture(const QString& file)
{
    QTimer::singleShot(0, this, [this, file] {
        for (auto* picture : std::as_const(m_pictures)) {
            if (picture->fileName() == file) {
                picture->raise();
                picture->activateWindow();
                return;
            }
        }
        auto* picture = new ImageWindow(file);
        m_pictures.append(picture);
        connect(picture, &QObject::destroyed, this, [this, picture] { m_pictures.removeOne(picture); });
        picture->setWindowIcon(window()->windowIcon());
        picture->show();
    });
}

void HelpBrowser::backward()
{
    step(PageHistory::Direction::Back);
}

void HelpBrowser::forward()
{
    step(PageHistory::Direction::Forward);
}

void HelpBrowser::step(PageHistory::Direction direction)
{
    if (const auto visit = m_history.step(direction, place())) {
        revisit(*visit);
    }
}

void HelpBrowser::revisit(const PageHistory::Visit& visit)
{
    {
        const QScopedValueRollback stepping(m_stepping, true);
        setSource(visit.item);
    }
    setPlace(visit.place);
    Q_EMIT backEnabled(m_history.canStep(PageHistory::Direction::Back));
    Q_EMIT forwardEnabled(m_history.canStep(PageHistory::Direction::Forward));
}

void HelpBrowser::home()
{
    auto* home = m_history.home();
    if (home == nullptr || home->page().trimmed().isEmpty()) {
        return;
    }
    m_history.leave();
    Q_EMIT forwardEnabled(false);
    setSource(home);
}

void HelpBrowser::reloadPage()
{
    auto* current = m_history.current();
    if (current == nullptr || !hasPage()) {
        return;
    }
    const int top = place();
    const QScopedValueRollback stepping(m_stepping, true);
    dropPage();
    setSource(current);
    setPlace(top);
}

void HelpBrowser::forget(const HelpContentsRoot& root)
{
    const bool isLast = m_library.roots().size() == 1;
    const bool hadCurrent = m_history.current() != nullptr;
    m_history.forget(
        [&](const HelpContentsItem& item) { return isLast || HelpLibrary::belongsTo(item, root); });
    Q_EMIT backEnabled(m_history.canStep(PageHistory::Direction::Back));
    Q_EMIT forwardEnabled(m_history.canStep(PageHistory::Direction::Forward));
    if (m_history.current() != nullptr) {
        Q_EMIT homeEnabled(!isSamePage(m_history.current(), m_history.home()));
        return;
    }
    m_isLost = hadCurrent;
    m_targets.clear();
    Q_EMIT upEnabled(false);
    Q_EMIT homeEnabled(false);
    Q_EMIT syncEnabled(false);
}

void HelpBrowser::recover()
{
    if (!std::exchange(m_isLost, false)) {
        return;
    }
    if (const auto visit = m_history.stepBackFromNowhere()) {
        revisit(*visit);
        return;
    }
    m_history = {};
    Q_EMIT forwardEnabled(false);
    setSource(QString());
    Q_EMIT captionChanged({});
    Q_EMIT currentChanged(nullptr);
}

void HelpBrowser::clearLinks()
{
    m_history = {};
    m_targets.clear();
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
    if (!scheme.isEmpty() && !isPageFile(url) && !QFileInfo::exists(url)) {
        const QString reason = tr("Links of the kind \"%1:\" are not followed.").arg(scheme);
        displayBuiltin(makeErrorPage(url, reason, {}, namedBy), {});
        return;
    }
    displayFile(url, item, namedBy);
}

void HelpBrowser::displayFile(const QString& url, const HelpContentsItem* item, const NamedBy& namedBy)
{
    const auto location = locatePage(url);
    if (page().isOf(location.file)) {
        scrollTo(location.anchor);
        return;
    }
    auto source = readPage(location.file);
    if (const QString package = packageOf(location.file);
        source.ok() && !package.isNull() && !m_library.isOpen(package)) {
        auto closed = makeClosedPage({package, url}, namedBy);
        displayBuiltin(closed.page, std::move(closed.targets));
        return;
    }
    if (!source.ok()) {
        displayError(source.error(), url, item, namedBy);
        return;
    }
    m_targets.clear();
    showPage(
        {HelpLibrary::absoluteName(location.file), pageFileState(location.file), source.take(), false, {}});
    if (passOn(item, namedBy)) {
        return;
    }
    if (isBlank()) {
        displayError(PageError::NothingToShow, url, item, namedBy);
        return;
    }
    scrollTo(location.anchor);
}

/// Shows the page that the one just shown passes its readers on to; only one step, as pages may do so in a
/// circle.
bool HelpBrowser::passOn(const HelpContentsItem* item, const NamedBy& namedBy)
{
    const QString from = page().file;
    const QString& refresh = page().prepared.refresh;
    if (refresh.isEmpty() || m_passingOn) {
        return false;
    }
    const QString target = resolveLink(page().prepared.base, refresh);
    if (HelpLibrary::isOneFile(locatePage(target).file, from)) {
        return false;
    }
    const QScopedValueRollback passingOn(m_passingOn, true);
    displayFile(target, item, namedBy);
    Q_EMIT noticed(tr("The page \"%1\" led on to this one").arg(from));
    return true;
}

void HelpBrowser::displayError(PageError error, const QString& url, const HelpContentsItem* item,
                               const NamedBy& namedBy)
{
    const bool isKnown = item != nullptr && !item->source->fileName.isNull();
    const NamedBy origin = isKnown ? NamedBy{item->source->fileName, item->namedInLine} : namedBy;
    displayBuiltin(makeErrorPage(url, describe(error), item == nullptr ? QString() : item->title(), origin),
                   {});
}

void HelpBrowser::displayBuiltin(const BuiltinPage& page, std::vector<RecordLink> targets)
{
    m_targets = std::move(targets);
    ShownPage shown;
    shown.source.text = page.toHtml();
    showPage(std::move(shown));
}

void HelpBrowser::followLink(const QString& href)
{
    const auto* link = recordLink(href);
    if (link == nullptr) {
        const QString from = page().file;
        open(linkTarget(href), nullptr, {from.isEmpty() ? QString() : from, 0});
        return;
    }
    // Copied, because showing a page replaces the table that it stands in.
    const RecordLink target = *link;
    if (auto* const* item = std::get_if<HelpContentsItem*>(&target)) {
        setSource(*item);
    } else if (auto* const* keyword = std::get_if<HelpIndexItem*>(&target)) {
        setSource(**keyword);
    } else if (const auto* closed = std::get_if<ClosedHelpSet>(&target)) {
        Q_EMIT helpSetRequested(closed->fileName, closed->page);
    }
}

/// The name of the page that a link of the page shown leads to.
QString HelpBrowser::linkTarget(const QString& href) const
{
    const auto* link = recordLink(href);
    return link != nullptr
               ? pageOf(*link)
               : pageInOpenSet(m_library,
                               resolveLink(href.startsWith(u'#') ? page().file : page().prepared.base, href));
}

const RecordLink* HelpBrowser::recordLink(const QString& href) const
{
    static const QString scheme = QStringLiteral("item:");
    if (m_targets.empty() || !href.startsWith(scheme)) {
        return nullptr;
    }
    bool ok = false;
    const auto number = size_t(href.sliced(scheme.size()).toULongLong(&ok));
    return ok && number < m_targets.size() ? &m_targets[number] : nullptr;
}
