// SPDX-License-Identifier: MIT
#include "index/helpindexfound.h"

#include "library/helplibrary.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

namespace {

constexpr int DialogMargin = 5;  // pixels
constexpr int Spacing = 7;       // pixels
constexpr int ColumnWidth = 200; // pixels
constexpr int ItemRole = Qt::UserRole;

} // namespace

HelpIndexFound::HelpIndexFound(const HelpLibrary& library, int group, QWidget* parent)
    : QDialog(parent), m_promptLabel(new QLabel(tr("Select topic and press the 'Show' button"), this)),
      m_topicList(new QTreeWidget(this)), m_showButton(new QPushButton(tr("Show"), this)),
      m_cancelButton(new QPushButton(tr("Cancel"), this)),
      m_items(library.keywordIndex().getIndexListByGroup(group))
{
    setWindowTitle(tr("Found topics"));
    setWindowIcon(parent->window()->windowIcon());
    buildLayout();
    addTopics(library);
    m_showButton->setDefault(true);
    connect(m_cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_showButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_topicList, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);
    // Its rows stand for entries of help sets.
    connect(&library, &HelpLibrary::helpSetAboutToBeRemoved, this, &QDialog::reject);
    m_topicList->setFocus();
}

void HelpIndexFound::buildLayout()
{
    m_topicList->setHeaderLabels({tr("Topic"), tr("Location"), tr("Page")});
    m_topicList->setAccessibleName(tr("Topics"));
    m_topicList->setRootIsDecorated(false);
    m_topicList->setUniformRowHeights(true);
    m_topicList->setAllColumnsShowFocus(true);
    m_topicList->setMinimumWidth(3 * ColumnWidth + 2 * m_topicList->frameWidth());
    m_topicList->setColumnWidth(0, ColumnWidth);
    m_topicList->setColumnWidth(1, ColumnWidth);

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
    layout->addWidget(m_topicList, 1, 0);
    layout->addLayout(buttons, 2, 0);
}

void HelpIndexFound::addTopics(const HelpLibrary& library)
{
    QList<QTreeWidgetItem*> rows;
    for (size_t i = 0; i < m_items.size(); ++i) {
        const auto& item = *m_items[i];
        auto* row = new QTreeWidgetItem({item.keyword.toString(), item.title(),
                                         item.hasPage() ? library.pageTitle(item.link()) : QString()});
        row->setData(0, ItemRole, qulonglong(i));
        row->setToolTip(2, QStringLiteral("<span>%1</span>").arg(item.link().toHtmlEscaped()));
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

HelpIndexItem* HelpIndexFound::getIndex() const
{
    const auto* row = m_topicList->currentItem();
    return row == nullptr ? nullptr : m_items[size_t(row->data(0, ItemRole).toULongLong())];
}
