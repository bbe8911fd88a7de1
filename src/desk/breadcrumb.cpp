// SPDX-License-Identifier: MIT
#include "desk/breadcrumb.h"

#include "library/helplibrary.h"
#include "library/helpset.h"
#include "library/tooltip.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr qsizetype LongestEntry = 70;  // characters of a menu's entry
constexpr qsizetype MaximumListed = 60; // rows of a menu, those nearest to the part's own

QString menuText(const QString& title)
{
    QString text = title.simplified();
    text = text.size() > LongestEntry ? text.first(LongestEntry - 1) + u'…' : text;
    return text.replace(u'&', QStringLiteral("&&"));
}

HelpContentsItem* firstPageOf(const HelpSet& set)
{
    if (set.firstPage() != nullptr || set.topRows().empty()) {
        return set.firstPage();
    }
    return set.topRows().front()->contentsItem;
}

} // namespace

Breadcrumb::Breadcrumb(HelpLibrary& library, QWidget* parent) : QWidget(parent), m_library(library)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 0, 2, 0);
    layout->setSpacing(0);
    layout->addStretch(1);
    setAccessibleName(tr("Place in the contents"));
    hide();
    connect(&library, &HelpLibrary::helpSetAboutToBeRemoved, this, [this] { setRow(nullptr); });
}

QSize Breadcrumb::minimumSizeHint() const
{
    return {0, QWidget::minimumSizeHint().height()};
}

void Breadcrumb::setRow(const HelpContentsListViewItem* row)
{
    if (row == m_row && row != nullptr) {
        return;
    }
    m_row = row;
    m_parts = row == nullptr ? std::vector<Part>() : partsOf(*row);
    for (size_t i = 0; i < m_parts.size(); ++i) {
        showPart(i, m_parts[i]);
    }
    for (size_t i = m_parts.size(); i < m_buttons.size(); ++i) {
        m_buttons[i]->hide();
    }
    setVisible(!m_parts.empty());
    fit();
}

std::vector<Breadcrumb::Part> Breadcrumb::partsOf(const HelpContentsListViewItem& row) const
{
    std::vector<Part> parts;
    for (const auto* part = &row; part != nullptr; part = part->parent) {
        parts.push_back({part->text.toString().simplified(), part->contentsItem, part});
    }
    const auto& set = m_library.helpSet(*row.contentsItem->root());
    parts.push_back({set.ownTitle().simplified(), firstPageOf(set), nullptr});
    if (set.titleRow() != nullptr) {
        parts.pop_back();
    }
    std::reverse(parts.begin(), parts.end());
    parts.front().row = set.titleRow() != nullptr ? nullptr : parts.front().row;
    return parts;
}

void Breadcrumb::showPart(size_t number, const Part& part)
{
    auto* button = number < m_buttons.size() ? m_buttons[number] : addButton();
    const bool hasSiblings = part.row == nullptr ? m_library.roots().size() > 1
                             : part.row->parent != nullptr
                                 ? part.row->parent->children.size() > 1
                                 : m_library.helpSet(*part.record->root()).topRows().size() > 1;
    button->setPopupMode(hasSiblings ? QToolButton::MenuButtonPopup : QToolButton::DelayedPopup);
    button->setMenu(hasSiblings ? button->findChild<QMenu*>() : nullptr);
    button->setToolTip(plainToolTip(part.text));
    button->setAccessibleName(part.text);
    button->setVisible(true);
}

QToolButton* Breadcrumb::addButton()
{
    const size_t number = m_buttons.size();
    auto* button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFocusPolicy(Qt::TabFocus);
    auto* menu = new QMenu(button);
    menu->setToolTipsVisible(true);
    connect(menu, &QMenu::aboutToShow, this, [this, menu, number] { fillMenu(*menu, m_parts[number]); });
    connect(button, &QToolButton::clicked, this, [this, number] { Q_EMIT chosen(m_parts[number].record); });
    static_cast<QHBoxLayout*>(layout())->insertWidget(int(number), button);
    m_buttons.push_back(button);
    return button;
}

void Breadcrumb::fillMenu(QMenu& menu, const Part& part)
{
    menu.clear();
    if (part.row == nullptr) {
        fillWithHelpSets(menu, part);
        return;
    }
    const auto rows = part.row->parent != nullptr ? part.row->parent->children
                                                  : m_library.helpSet(*part.record->root()).topRows();
    const auto own = std::find(rows.begin(), rows.end(), part.row) - rows.begin();
    const auto count = qsizetype(rows.size());
    const auto first =
        std::clamp<qsizetype>(own - MaximumListed / 2, 0, std::max<qsizetype>(0, count - MaximumListed));
    for (auto i = first; i < std::min(count, first + MaximumListed); ++i) {
        addEntry(menu, rows[size_t(i)]->text.toString(), rows[size_t(i)]->contentsItem, i == own);
    }
}

void Breadcrumb::fillWithHelpSets(QMenu& menu, const Part& part)
{
    for (const auto* root : m_library.roots()) {
        const auto& set = m_library.helpSet(*root);
        if (auto* record = firstPageOf(set)) {
            addEntry(menu, set.ownTitle(), record, root == part.record->root());
        }
    }
}

void Breadcrumb::addEntry(QMenu& menu, const QString& text, HelpContentsItem* record, bool isCurrent)
{
    auto* action = menu.addAction(menuText(text), this, [this, record] { Q_EMIT chosen(record); });
    action->setCheckable(true);
    action->setChecked(isCurrent);
    if (text.size() > LongestEntry) {
        action->setToolTip(plainToolTip(text));
    }
    if (isCurrent) {
        menu.setActiveAction(action);
    }
}

void Breadcrumb::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fit();
}

void Breadcrumb::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fit();
    }
}

void Breadcrumb::fit()
{
    std::vector<int> widths; // of the texts
    int left = width() - contentsMargins().left() - contentsMargins().right();
    for (size_t i = 0; i < m_parts.size(); ++i) {
        auto* button = m_buttons[i];
        button->setText({});
        left -= button->sizeHint().width() + button->fontMetrics().averageCharWidth();
        widths.push_back(button->fontMetrics().horizontalAdvance(m_parts[i].text));
    }
    // The bound that cuts as little as possible, from the longest down.
    std::vector<int> sorted = widths;
    std::sort(sorted.begin(), sorted.end());
    int bound = sorted.empty() ? 0 : sorted.back();
    for (size_t i = 0; i < sorted.size(); ++i) {
        const int share = std::max(0, left) / int(sorted.size() - i);
        if (sorted[i] > share) {
            bound = share;
            break;
        }
        left -= sorted[i];
    }
    for (size_t i = 0; i < m_parts.size(); ++i) {
        const auto metrics = m_buttons[i]->fontMetrics();
        const QString text = metrics.elidedText(m_parts[i].text, Qt::ElideMiddle, bound + 1);
        m_buttons[i]->setText(QString(text).replace(u'&', QStringLiteral("&&")));
    }
}
