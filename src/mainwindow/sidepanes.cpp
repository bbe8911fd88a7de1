// SPDX-License-Identifier: MIT
#include "mainwindow/sidepanes.h"

#include "contents/helpcontents.h"
#include "contents/helpcontentslistview.h"
#include "icons/icons.h"
#include "index/helpindex.h"
#include "search/searchpane.h"

#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

namespace {

constexpr int LeastUsefulWidth = 200; // pixels

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
}

void SidePanes::showContents()
{
    show();
    m_tabs->setCurrentWidget(m_contents);
}

int SidePanes::usefulWidth() const
{
    return std::max(LeastUsefulWidth, m_tabs->tabBar()->sizeHint().width());
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
    show();
    m_tabs->setCurrentWidget(pane);
    pane->setFocus(Qt::ShortcutFocusReason);
}
