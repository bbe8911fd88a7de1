// SPDX-License-Identifier: MIT
#include "mainwindow/sidepanes.h"

#include "browser/helpbrowser.h"
#include "contents/helpcontents.h"
#include "contents/helpcontentslistview.h"
#include "desk/desk.h"
#include "desk/pageoutline.h"
#include "icons/icons.h"
#include "index/helpindex.h"
#include "library/helpcontentsitem.h"
#include "library/helpcontentslistviewitem.h"
#include "library/helpindexitem.h"
#include "search/searchpane.h"

#include <QApplication>
#include <QMainWindow>
#include <QResizeEvent>
#include <QShortcut>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

constexpr int LeastUsefulWidth = 200; // pixels
constexpr int LargestWidth = 420;     // pixels, unless the user wants more
constexpr int PartOfWindow = 27;      // percent
constexpr int NarrowWindow = 520;     // pixels; below, there is no room beside the page
constexpr int LeastOutlinePart = 5;   // percent
constexpr int PartOverPage = 85;      // percent of a narrow window

} // namespace

SidePanes::SidePanes(HelpLibrary& library, Desk& desk, QWidget* parent)
    : QDockWidget(tr("Contents"), parent), m_desk(desk), m_tabs(new QTabWidget(this)),
      m_reading(new QSplitter(Qt::Vertical, this))
{
    setObjectName(QStringLiteral("contentsDock"));
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    m_tabs->setUsesScrollButtons(false);
    m_tabs->setElideMode(Qt::ElideRight);
    setWidget(m_tabs);
    // Beside the page its user decides how narrow it is; a window of its own begins at its least width.
    connect(this, &QDockWidget::topLevelChanged, this,
            [this](bool isFloating) { m_tabs->setMinimumWidth(isFloating ? usefulWidth() : 0); });
    const ContentsIcons icons{bookIcon(BookIcon::Close), bookIcon(BookIcon::Open), bookIcon(BookIcon::Item)};
    m_contents = new HelpContents(library, icons, this);
    m_reading->addWidget(m_contents);
    m_reading->setChildrenCollapsible(false);
    m_reading->setFocusProxy(m_contents);
    m_tabs->addTab(m_reading, tr("Contents"));
    m_index = new HelpIndex(library, this);
    m_tabs->addTab(m_index, tr("Index"));
    m_search = new SearchPane(this);
    m_tabs->addTab(m_search, tr("Search"));
    connect(this, &QDockWidget::visibilityChanged, this, [this](bool isVisible) {
        if (m_overPage == nullptr) {
            Q_EMIT shownChanged(isVisible);
        }
    });
    connectChoices();
    parent->installEventFilter(this);
}

void SidePanes::connectChoices()
{
    connect(m_contents, &HelpContents::pageRequested, &m_desk,
            [this](HelpContentsItem* record) { m_desk.show(record); });
    connect(m_contents, &HelpContents::passedBy, &m_desk, &Desk::showPassing);
    connect(m_index, &HelpIndex::pageRequested, &m_desk,
            [this](const HelpIndexItem* keyword) { m_desk.show(keyword); });
    connect(&m_desk, &Desk::rowChanged, m_index, [this](const HelpContentsListViewItem* row) {
        const auto* record = m_desk.current();
        m_index->setInUse(row == nullptr ? nullptr : row->contentsItem->root(),
                          record == nullptr ? QString() : record->page());
    });
    connect(m_index, &HelpIndex::searchRequested, this, [this](const QString& text) {
        m_search->setQuery(text);
        goToSearch();
    });
    connect(m_contents, &HelpContents::linkHovered, this, &SidePanes::linkHovered);
    connect(m_index, &HelpIndex::linkHovered, this, &SidePanes::linkHovered);
    connect(m_search, &SearchPane::linkHovered, this, &SidePanes::linkHovered);
    connect(m_contents, &HelpContents::pageRequested, this, &SidePanes::closeOverPage);
    connect(m_index, &HelpIndex::pageRequested, this, &SidePanes::closeOverPage);
    connect(m_search, &SearchPane::pageRequested, this, &SidePanes::closeOverPage);
}

bool SidePanes::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && watched == parent() && !isFloating()) {
        const auto* resize = static_cast<QResizeEvent*>(event);
        setOverPage(resize->size().width() < NarrowWindow);
        fitOverPage();
        // Until the user gives it another width.
        m_takesPart = m_takesPart && (!isVisible() || width() == widthFor(resize->oldSize().width()));
        if (m_takesPart) {
            static_cast<QMainWindow*>(parent())->resizeDocks({this}, {widthFor(resize->size().width())},
                                                             Qt::Horizontal);
        }
    }
    return QDockWidget::eventFilter(watched, event);
}

void SidePanes::setOverPage(bool isOverPage)
{
    if (isOverPage == (m_overPage != nullptr)) {
        return;
    }
    if (!isOverPage) {
        setWidget(m_tabs);
        m_tabs->show();
        delete std::exchange(m_overPage, nullptr);
        setVisible(m_wasShown);
        return;
    }
    m_wasShown = !isHidden();
    m_overPage = new QFrame(parentWidget());
    m_overPage->setObjectName(QStringLiteral("panesOverPage"));
    m_overPage->setFrameShape(QFrame::StyledPanel);
    m_overPage->setAutoFillBackground(true);
    m_overPage->hide();
    auto* layout = new QVBoxLayout(m_overPage);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(m_tabs);
    hide();
    Q_EMIT shownChanged(false);
}

void SidePanes::fitOverPage()
{
    const auto* page = static_cast<QMainWindow*>(parent())->centralWidget();
    if (m_overPage == nullptr || page == nullptr) {
        return;
    }
    const int width = std::max(usefulWidth(), parentWidget()->width() * PartOverPage / 100);
    m_overPage->setGeometry(0, page->y(), std::min(width, parentWidget()->width()), page->height());
}

void SidePanes::setShown(bool isShown)
{
    if (m_overPage == nullptr) {
        setVisible(isShown);
        return;
    }
    fitOverPage();
    m_overPage->setVisible(isShown);
    m_overPage->raise();
    Q_EMIT shownChanged(isShown);
}

bool SidePanes::closeOverPage()
{
    const bool isOverPage = m_overPage != nullptr && m_overPage->isVisible();
    if (isOverPage) {
        setShown(false);
    }
    return isOverPage;
}

int SidePanes::widthFor(int windowWidth) const
{
    return std::max(usefulWidth(), std::min(windowWidth * PartOfWindow / 100, LargestWidth));
}

void SidePanes::showContents()
{
    setShown(true);
    m_tabs->setCurrentWidget(m_reading);
}

void SidePanes::selectCurrentRow()
{
    if (const auto* row = m_desk.currentRow()) {
        m_contents->selectRow(row);
    }
}

int SidePanes::usefulWidth() const
{
    return std::max(LeastUsefulWidth, m_tabs->tabBar()->sizeHint().width());
}

void SidePanes::setOutlineShown(bool isShown)
{
    if (isShown == isOutlineShown()) {
        return;
    }
    if (isShown && m_outline == nullptr) {
        makeOutline();
    }
    m_outline->setVisible(isShown);
    m_reading->setSizes({100 - m_outlinePart, m_outlinePart});
    Q_EMIT outlineShownChanged(isShown);
}

void SidePanes::setOutlinePart(int percent)
{
    m_outlinePart = std::clamp(percent, LeastOutlinePart, 100 - LeastOutlinePart);
}

bool SidePanes::isOutlineShown() const
{
    return m_outline != nullptr && !m_outline->isHidden();
}

void SidePanes::makeOutline()
{
    m_outline = new PageOutline(m_desk.view(), m_reading);
    m_outline->hide();
    m_reading->addWidget(m_outline);
    connect(m_outline, &PageOutline::closeRequested, this, [this] { setOutlineShown(false); });
    connect(m_outline, &PageOutline::chosen, this, [this](const QString& anchor) {
        m_desk.scrollTo(anchor);
        closeOverPage();
    });
    connect(m_reading, &QSplitter::splitterMoved, this,
            [this] { setOutlinePart(100 * m_outline->height() / m_reading->height()); });
}

void SidePanes::addShortcuts(QWidget& window)
{
    new QShortcut(Qt::CTRL | Qt::Key_1, &window, this, &SidePanes::goToContents);
    new QShortcut(Qt::CTRL | Qt::Key_2, &window, this, &SidePanes::goToIndex);
    new QShortcut(Qt::CTRL | Qt::Key_3, &window, this, &SidePanes::goToSearch);
    new QShortcut(Qt::CTRL | Qt::Key_4, &window, this, &SidePanes::goToOutline);
    new QShortcut(Qt::Key_F6, &window, this, [this] {
        if (m_tabs->isAncestorOf(QApplication::focusWidget())) {
            m_desk.setFocus(Qt::ShortcutFocusReason);
        } else {
            goToCurrent();
        }
    });
}

void SidePanes::goToContents()
{
    goTo(m_reading);
}

void SidePanes::goToIndex()
{
    goTo(m_index);
    m_index->selectLookFor();
}

void SidePanes::goToSearch()
{
    goTo(m_search);
    m_search->selectQuery();
}

void SidePanes::goToOutline()
{
    setOutlineShown(true);
    goTo(m_reading);
    m_outline->setFocus(Qt::ShortcutFocusReason);
}

void SidePanes::goToCurrent()
{
    goTo(m_tabs->currentWidget());
}

void SidePanes::goTo(QWidget* pane)
{
    setShown(true);
    m_tabs->setCurrentWidget(pane);
    pane->setFocus(Qt::ShortcutFocusReason);
}
