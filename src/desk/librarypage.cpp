// SPDX-License-Identifier: MIT
#include "desk/librarypage.h"

#include "desk/librarylist.h"
#include "library/tooltip.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int Margin = 20;             // pixels around the page
constexpr int WidestPage = 900;        // pixels; wider lines are hard to follow
constexpr int NarrowPage = 560;        // pixels; below, there is no room for all buttons
constexpr int ShortPage = 10;          // entries that need no filter line
constexpr qsizetype TitlesShown = 3;   // of a session
constexpr qsizetype LongestTitle = 24; // characters of such a title
constexpr qreal HeadingSize = 1.6;     // of the font's size

QString shortTitle(const QString& title)
{
    QString text = title.simplified();
    if (text.size() > LongestTitle) {
        text = text.first(LongestTitle - 1) + u'…';
    }
    return text.replace(u'&', QStringLiteral("&&"));
}

} // namespace

LibraryPage::LibraryPage(QWidget* parent)
    : QWidget(parent), m_heading(new QLabel(tr("Library"), this)), m_hint(new QLabel(this)),
      m_notices(new QLabel(this)), m_addButton(new QPushButton(tr("&Add Contents..."), this)),
      m_machineButton(new QPushButton(tr("Documentation on &This Machine..."), this)),
      m_sessionButton(new QPushButton(this)), m_manualButton(new QPushButton(tr("Quenda &Manual"), this)),
      m_filter(new QLineEdit(this)), m_list(new LibraryList(this)), m_rest(new QWidget(this)),
      m_openButton(new QPushButton(tr("&Open"), this)),
      m_installButton(new QPushButton(tr("&Install"), this)),
      m_removeButton(new QPushButton(tr("&Remove"), this)),
      m_searchButton(new QPushButton(tr("&Search Here"), this)),
      m_clearButton(new QPushButton(tr("For&get All"), this))
{
    setObjectName(QStringLiteral("libraryPage"));
    setAutoFillBackground(true);
    QFont font = m_heading->font();
    font.setPointSizeF(std::max<qreal>(1, font.pointSizeF()) * HeadingSize);
    m_heading->setFont(font);
    m_hint->setText(tr("No help set is open. Add one, or drop its contents file on the window."));
    m_hint->setWordWrap(true);
    m_notices->setTextFormat(Qt::PlainText);
    m_notices->setWordWrap(true);
    m_notices->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_notices->hide();
    m_sessionButton->hide();
    m_filter->setPlaceholderText(tr("Filter"));
    m_filter->setAccessibleName(tr("Filter"));
    m_filter->installEventFilter(this);
    m_list->installEventFilter(this);
    buildLayout();
    connectParts();
    setFocusProxy(m_list);
}

void LibraryPage::buildLayout()
{
    auto* first = new QHBoxLayout;
    first->addWidget(m_addButton);
    first->addWidget(m_machineButton);
    first->addWidget(m_manualButton);
    first->addStretch(1);
    auto* last = new QHBoxLayout;
    for (auto* button : {m_openButton, m_searchButton, m_installButton, m_removeButton}) {
        last->addWidget(button);
    }
    last->addStretch(1);
    last->addWidget(m_clearButton);
    for (auto* button : findChildren<QPushButton*>()) {
        button->setMinimumWidth(0);
        button->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    }

    auto* column = new QVBoxLayout;
    column->addWidget(m_heading);
    column->addWidget(m_hint);
    column->addWidget(m_notices);
    column->addLayout(first);
    column->addWidget(m_sessionButton, 0, Qt::AlignLeft);
    column->addWidget(m_filter);
    column->addWidget(m_list, 1);
    column->addWidget(m_rest, 1);
    column->addLayout(last);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Margin, Margin, Margin, Margin);
    layout->addLayout(column);
}

void LibraryPage::connectParts()
{
    connect(m_addButton, &QPushButton::clicked, this, &LibraryPage::addRequested);
    connect(m_machineButton, &QPushButton::clicked, this, &LibraryPage::machineRequested);
    connect(m_manualButton, &QPushButton::clicked, this, &LibraryPage::manualRequested);
    connect(m_sessionButton, &QPushButton::clicked, this, &LibraryPage::sessionRequested);
    connect(m_clearButton, &QPushButton::clicked, this, &LibraryPage::clearRequested);
    connect(m_openButton, &QPushButton::clicked, this, &LibraryPage::open);
    connect(m_removeButton, &QPushButton::clicked, this, &LibraryPage::remove);
    connect(m_installButton, &QPushButton::clicked, this, [this] {
        if (const auto entry = m_list->current()) {
            Q_EMIT installRequested(entry->fileName, !entry->isInstalled);
        }
    });
    connect(m_searchButton, &QPushButton::clicked, this, [this] {
        if (const auto entry = m_list->current()) {
            Q_EMIT searchRequested(entry->fileName);
        }
    });
    connect(m_filter, &QLineEdit::textChanged, m_list, &LibraryList::filter);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &LibraryPage::showCommands);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &LibraryPage::open);
    connect(m_list, &QTreeWidget::customContextMenuRequested, this, &LibraryPage::openMenu);
}

void LibraryPage::setEntries(const std::vector<LibraryEntry>& entries)
{
    m_list->setEntries(entries);
    m_list->setVisible(!entries.empty());
    m_rest->setVisible(entries.empty());
    m_hint->setHidden(std::any_of(entries.begin(), entries.end(),
                                  [](const auto& entry) { return entry.kind == LibraryEntry::Kind::Open; }));
    m_filter->setVisible(int(entries.size()) > ShortPage);
    m_list->filter(m_filter->isHidden() ? QString() : m_filter->text());
    showCommands();
}

void LibraryPage::setFacts(const LibraryEntry& facts)
{
    m_list->setFacts(facts);
    showCommands();
}

void LibraryPage::setNotices(const QStringList& notices)
{
    m_notices->setText(notices.join(u'\n'));
    m_notices->setHidden(notices.isEmpty());
}

void LibraryPage::setSession(const QStringList& titles)
{
    QStringList shown;
    for (const auto& title : titles.mid(0, TitlesShown)) {
        shown += shortTitle(title);
    }
    const QString more = titles.size() > TitlesShown ? QStringLiteral(", …") : QString();
    m_sessionButton->setText(tr("Open A&gain: %1").arg(shown.join(QStringLiteral(", ")) + more));
    m_sessionButton->setToolTip(plainToolTip(titles.join(QStringLiteral(", "))));
    m_sessionButton->setHidden(titles.isEmpty());
}

void LibraryPage::showCommands()
{
    const auto entry = m_list->current();
    const bool isOpen = entry && entry->kind == LibraryEntry::Kind::Open;
    // What a narrow page has no room for is in the menu of the list.
    const bool isNarrow = width() < NarrowPage;
    for (auto* button : {m_openButton, m_searchButton, m_installButton, m_removeButton}) {
        const bool isDispensable = button == m_searchButton || button == m_installButton;
        button->setVisible(!m_list->entries().empty() && !(isNarrow && isDispensable));
        button->setEnabled(entry.has_value());
    }
    m_openButton->setEnabled(entry && entry->canBeOpened);
    m_installButton->setEnabled(entry && (entry->canBeOpened || entry->isInstalled));
    m_searchButton->setEnabled(entry && entry->canBeOpened);
    m_installButton->setText(entry && entry->isInstalled ? tr("Un&install") : tr("&Install"));
    m_removeButton->setText(isOpen ? tr("&Close") : tr("&Remove"));
    m_clearButton->setVisible(
        std::any_of(m_list->entries().begin(), m_list->entries().end(),
                    [](const auto& listed) { return listed.kind == LibraryEntry::Kind::Before; }));
}

void LibraryPage::openMenu(const QPoint& point)
{
    const auto* row = m_list->itemAt(point);
    if (!m_list->current() || row != m_list->currentItem()) {
        return;
    }
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (auto* button : {m_openButton, m_searchButton, m_installButton, m_removeButton}) {
        auto* action = menu->addAction(button->text(), button, &QPushButton::click);
        action->setEnabled(button->isEnabled());
    }
    menu->popup(m_list->viewport()->mapToGlobal(point));
}

void LibraryPage::open()
{
    const auto entry = m_list->current();
    if (entry && entry->canBeOpened) {
        Q_EMIT openRequested(entry->fileName);
    }
}

void LibraryPage::remove()
{
    if (const auto entry = m_list->current()) {
        Q_EMIT removeRequested(entry->kind, entry->fileName);
    }
}

void LibraryPage::resizeEvent(QResizeEvent* event)
{
    const int side = std::max(Margin, (width() - WidestPage) / 2);
    layout()->setContentsMargins(side, Margin, side, Margin);
    QWidget::resizeEvent(event);
    showCommands();
}

/// Enter opens, Delete removes; in the filter line the arrow keys go through the list.
bool LibraryPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        open();
        return true;
    }
    if (watched == m_list && key == Qt::Key_Delete) {
        remove();
        return true;
    }
    if (watched == m_filter && (key == Qt::Key_Down || key == Qt::Key_Up)) {
        m_list->setFocus();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
