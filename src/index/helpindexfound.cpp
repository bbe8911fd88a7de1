// SPDX-License-Identifier: MIT
#include "index/helpindexfound.h"

#include "library/helplibrary.h"
#include "library/tooltip.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTreeWidget>

#include <algorithm>

namespace {

constexpr int DialogMargin = 5;   // pixels
constexpr int Spacing = 7;        // pixels
constexpr int LeastColumn = 120;  // pixels
constexpr int WidestColumn = 400; // pixels
constexpr int ColumnGap = 16;     // pixels
constexpr int FewTopics = 10;     // that need no filter line
constexpr int PartOfScreen = 9;   // tenths that the dialog may be wide
constexpr int ItemRole = Qt::UserRole;

} // namespace

HelpIndexFound::HelpIndexFound(const HelpLibrary& library, int group, QWidget* parent)
    : QDialog(parent), m_promptLabel(new QLabel(tr("Select topic and press the 'Show' button"), this)),
      m_filterEdit(new QLineEdit(this)), m_topicList(new QTreeWidget(this)),
      m_showButton(new QPushButton(tr("Show"), this)), m_cancelButton(new QPushButton(tr("Cancel"), this)),
      m_items(library.keywordIndex().getIndexListByGroup(group))
{
    setWindowTitle(tr("Found topics"));
    setWindowIcon(parent->window()->windowIcon());
    buildLayout();
    addTopics(library);
    fitColumns();
    m_showButton->setDefault(true);
    connect(m_cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_showButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_topicList, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);
    // Its rows stand for entries of help sets.
    connect(&library, &HelpLibrary::helpSetAboutToBeRemoved, this, &QDialog::reject);
    connect(m_filterEdit, &QLineEdit::textChanged, this, &HelpIndexFound::filter);
    m_topicList->setFocus();
}

void HelpIndexFound::buildLayout()
{
    m_topicList->setHeaderLabels({tr("Topic"), tr("Location"), tr("Page")});
    m_topicList->setAccessibleName(tr("Topics"));
    m_topicList->setRootIsDecorated(false);
    m_topicList->setUniformRowHeights(true);
    m_topicList->setAllColumnsShowFocus(true);
    m_filterEdit->setPlaceholderText(tr("Filter"));
    m_filterEdit->setAccessibleName(tr("Filter"));
    m_filterEdit->setHidden(m_items.size() <= FewTopics);

    auto* buttons = new QGridLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->setSpacing(2);
    buttons->addItem(new QSpacerItem(51, 0, QSizePolicy::Expanding, QSizePolicy::Minimum), 0, 0);
    buttons->addWidget(m_showButton, 0, 1);
    buttons->addWidget(m_cancelButton, 0, 2);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(DialogMargin, DialogMargin, DialogMargin, DialogMargin);
    layout->setSpacing(Spacing);
    layout->addWidget(m_promptLabel, 0, 0);
    layout->addWidget(m_filterEdit, 1, 0);
    layout->addWidget(m_topicList, 2, 0);
    layout->addLayout(buttons, 3, 0);
}

void HelpIndexFound::addTopics(const HelpLibrary& library)
{
    QList<QTreeWidgetItem*> rows;
    for (size_t i = 0; i < m_items.size(); ++i) {
        const auto& item = *m_items[i];
        auto* row = new QTreeWidgetItem({item.keyword.toString(), item.title(),
                                         item.hasPage() ? library.pageTitle(item.link()) : QString()});
        row->setData(0, ItemRole, qulonglong(i));
        row->setToolTip(2, plainToolTip(item.link()));
        rows.append(row);
    }
    m_topicList->addTopLevelItems(rows);
    // The rows keep their order until the user sorts them by a header.
    m_topicList->header()->setSortIndicator(-1, Qt::AscendingOrder);
    m_topicList->setSortingEnabled(true);
    if (!rows.isEmpty()) {
        m_topicList->setCurrentItem(rows.constFirst());
    }
}

void HelpIndexFound::prefer(const HelpContentsRoot* inUse, const QString& page)
{
    const auto rank = [&](const HelpIndexItem* item) {
        return (item->link() == page ? 2 : 0) + (item->source->contentsItem == inUse ? 0 : 1);
    };
    const auto best = std::min_element(m_items.begin(), m_items.end(),
                                       [&](const auto* a, const auto* b) { return rank(a) < rank(b); });
    if (best != m_items.end()) {
        m_topicList->setCurrentItem(m_topicList->topLevelItem(int(best - m_items.begin())));
    }
}

/// As wide as their contents need, within the screen.
void HelpIndexFound::fitColumns()
{
    int width = 2 * m_topicList->frameWidth() + m_topicList->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    for (int column = 0; column < m_topicList->columnCount(); ++column) {
        m_topicList->resizeColumnToContents(column);
        const int wanted =
            std::clamp(m_topicList->columnWidth(column) + ColumnGap, LeastColumn, WidestColumn);
        m_topicList->setColumnWidth(column, wanted);
        width += wanted;
    }
    const int widest = screen()->availableGeometry().width() * PartOfScreen / 10;
    setMaximumWidth(widest);
    m_topicList->setMinimumWidth(std::min(width, widest - 2 * DialogMargin));
}

void HelpIndexFound::filter(const QString& text)
{
    QTreeWidgetItem* firstShown = nullptr;
    for (int i = 0; i < m_topicList->topLevelItemCount(); ++i) {
        auto* row = m_topicList->topLevelItem(i);
        bool isShown = false;
        for (int column = 0; column < row->columnCount(); ++column) {
            isShown = isShown || row->text(column).contains(text, Qt::CaseInsensitive);
        }
        row->setHidden(!isShown);
        firstShown = firstShown == nullptr && isShown ? row : firstShown;
    }
    if (m_topicList->currentItem() == nullptr || m_topicList->currentItem()->isHidden()) {
        m_topicList->setCurrentItem(firstShown);
    }
    m_showButton->setEnabled(firstShown != nullptr);
}

HelpIndexItem* HelpIndexFound::getIndex() const
{
    const auto* row = m_topicList->currentItem();
    return row == nullptr ? nullptr : m_items[size_t(row->data(0, ItemRole).toULongLong())];
}
