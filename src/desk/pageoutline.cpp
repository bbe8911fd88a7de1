// SPDX-License-Identifier: MIT
#include "desk/pageoutline.h"

#include "browser/pageanchors.h"
#include "browser/pageview.h"
#include "library/tooltip.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QStyle>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace {

constexpr int RenewingDelay = 50;     // ms, so that a page is on the screen before its headings are
constexpr int LevelWidth = 12;        // pixels
constexpr int TitleMargin = 4;        // pixels
constexpr size_t MaximumRows = 5'000; // nobody goes through more

constexpr int AnchorRole = Qt::UserRole;

} // namespace

PageOutline::PageOutline(PageView& view, QWidget* parent)
    : QWidget(parent), m_view(view), m_list(new QTreeWidget(this)), m_hint(new QLabel(m_list->viewport()))
{
    setObjectName(QStringLiteral("pageOutline"));
    m_list->setAccessibleName(tr("On This Page"));
    m_list->setHeaderHidden(true);
    m_list->setExpandsOnDoubleClick(false);
    m_list->setIndentation(LevelWidth);
    m_list->setUniformRowHeights(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_hint->setText(tr("The page has no headings."));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    m_hint->setEnabled(false);
    setFocusProxy(m_list);
    m_renewing.setSingleShot(true);
    m_renewing.setInterval(RenewingDelay);
    buildLayout();
    connectView();
}

void PageOutline::buildLayout()
{
    auto* title = new QLabel(tr("On This Page"), this);
    auto* close = new QToolButton(this);
    close->setObjectName(QStringLiteral("closeOutlineButton"));
    close->setAutoRaise(true);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setFocusPolicy(Qt::NoFocus);
    close->setToolTip(tr("Close"));
    close->setAccessibleName(tr("Close"));
    connect(close, &QToolButton::clicked, this, &PageOutline::closeRequested);

    auto* line = new QHBoxLayout;
    line->setContentsMargins(TitleMargin, 0, 0, 0);
    line->addWidget(title, 1);
    line->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(line);
    layout->addWidget(m_list, 1);
    auto* inList = new QVBoxLayout(m_list->viewport());
    inList->addWidget(m_hint);
}

void PageOutline::connectView()
{
    connect(m_list, &QTreeWidget::itemClicked, this, [this](const QTreeWidgetItem* row) { choose(*row); });
    connect(m_list, &QTreeWidget::itemActivated, this, [this](const QTreeWidgetItem* row) { choose(*row); });
    connect(&m_renewing, &QTimer::timeout, this, &PageOutline::renew);
    connect(&m_view, &PageView::pageChanged, this, [this] {
        m_isOutdated = true;
        m_scrolledTo = -1;
        m_renewing.start();
    });
    connect(&m_view, &PageView::arrived, this, [this](int position) {
        m_arrivedAt = position;
        m_scrolledTo = m_view.verticalScrollBar()->value();
        m_renewing.start();
    });
    connect(m_view.verticalScrollBar(), &QScrollBar::valueChanged, &m_renewing, [this] {
        if (!m_renewing.isActive()) {
            m_renewing.start();
        }
    });
}

void PageOutline::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_renewing.start();
}

/// Copied, because going there may lead to other rows.
void PageOutline::choose(const QTreeWidgetItem& row)
{
    const QString anchor = row.data(0, AnchorRole).toString();
    Q_EMIT chosen(anchor);
}

void PageOutline::renew()
{
    if (!isVisible()) {
        return;
    }
    if (std::exchange(m_isOutdated, false)) {
        fill();
    }
    follow();
}

void PageOutline::fill()
{
    m_rows.clear();
    m_list->clear();
    std::vector<std::pair<int, QTreeWidgetItem*>> above; // levels and rows
    QList<QTreeWidgetItem*> topRows;
    for (const auto& heading : m_view.page().prepared.headings) {
        if (heading.text.isEmpty() || size_t(m_rows.size()) >= MaximumRows) {
            continue;
        }
        while (!above.empty() && above.back().first >= heading.level) {
            above.pop_back();
        }
        auto* row = new QTreeWidgetItem({heading.text.simplified()});
        row->setData(0, AnchorRole, heading.anchor);
        row->setToolTip(0, plainToolTip(heading.text));
        if (above.empty()) {
            topRows.append(row);
        } else {
            above.back().second->addChild(row);
        }
        above.emplace_back(heading.level, row);
        m_rows.insert(heading.anchor, row);
    }
    m_list->addTopLevelItems(topRows);
    m_list->expandAll();
    m_hint->setVisible(topRows.isEmpty());
}

void PageOutline::follow()
{
    const QString anchor = PageAnchors::lastOf(*m_view.document(), readingPosition(),
                                               [this](const QString& name) { return m_rows.contains(name); });
    if (auto* row = m_rows.value(anchor); row != m_list->currentItem()) {
        m_list->setCurrentItem(row);
    }
}

/// A place that the view was taken to is read even where it cannot stand at the top.
int PageOutline::readingPosition() const
{
    const auto* bar = m_view.verticalScrollBar();
    if (bar->value() == m_scrolledTo) {
        return m_arrivedAt;
    }
    constexpr int linesBelowTop = 2;
    const bool isAtEnd = bar->maximum() > 0 && bar->value() == bar->maximum() && !m_view.isFilling();
    const int height = m_view.viewport()->height();
    const int y = isAtEnd ? height - 1 : std::min(height, linesBelowTop * m_view.fontMetrics().height());
    return m_view.cursorForPosition(QPoint(m_view.viewport()->width() / 2, y)).position();
}
