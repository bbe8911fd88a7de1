// SPDX-License-Identifier: MIT
#include "mainwindow/sidepanes.h"

#include "contents/helpcontents.h"
#include "contents/helpcontentslistview.h"
#include "icons/icons.h"
#include "index/helpindex.h"
#include "library/helpcontentsitem.h"
#include "library/helpindexitem.h"
#include "search/searchpane.h"

#include <QApplication>
#include <QMainWindow>
#include <QResizeEvent>
#include <QShortcut>
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
constexpr int PartOverPage = 85;      // percent of a narrow window

} // namespace

SidePanes::SidePanes(HelpLibrary& library, QWidget* parent)
    : QDockWidget(tr("Contents"), parent), m_tabs(new QTabWidget(this))
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
    m_tabs->addTab(m_contents, tr("Contents"));
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
    m_tabs->setCurrentWidget(m_contents);
}

int SidePanes::usefulWidth() const
{
    return std::max(LeastUsefulWidth, m_tabs->tabBar()->sizeHint().width());
}

void SidePanes::addShortcuts(QWidget& window, QWidget& page)
{
    new QShortcut(Qt::CTRL | Qt::Key_1, &window, this, &SidePanes::goToContents);
    new QShortcut(Qt::CTRL | Qt::Key_2, &window, this, &SidePanes::goToIndex);
    new QShortcut(Qt::CTRL | Qt::Key_3, &window, this, &SidePanes::goToSearch);
    new QShortcut(Qt::Key_F6, &window, this, [this, &page] {
        if (m_tabs->isAncestorOf(QApplication::focusWidget())) {
            page.setFocus(Qt::ShortcutFocusReason);
        } else {
            goToCurrent();
        }
    });
}

void SidePanes::goToContents()
{
    goTo(m_contents);
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
