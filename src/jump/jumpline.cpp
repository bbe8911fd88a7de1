// SPDX-License-Identifier: MIT
#include "jump/jumpline.h"

#include "jump/jumpdelegate.h"
#include "jump/jumpmodel.h"
#include "library/helplibrary.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

constexpr size_t MaximumListed = 100;
constexpr int ShownRows = 12;
constexpr int Margin = 8;       // pixels
constexpr int WidestLine = 720; // pixels
constexpr int WindowGap = 12;   // pixels to the window's sides

} // namespace

JumpLine::JumpLine(HelpLibrary& library, QWidget& window)
    : QFrame(&window), m_window(window), m_search(library), m_model(new JumpModel(library, this)),
      m_field(new QLineEdit(this)), m_list(new QListView(this)), m_hint(new QLabel(this))
{
    setObjectName(QStringLiteral("jumpLine"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setFocusProxy(m_field);
    m_field->setPlaceholderText(tr("Jump to a topic, keyword or heading"));
    m_field->setAccessibleName(tr("Jump to"));
    m_list->setAccessibleName(tr("Where one can jump to"));
    m_list->setModel(m_model);
    m_list->setItemDelegate(new JumpDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_hint->setTextFormat(Qt::PlainText);
    m_hint->setWordWrap(true);
    hide();
    buildLayout();
    m_field->installEventFilter(this);
    window.installEventFilter(this);
    connect(m_field, &QLineEdit::textChanged, this, &JumpLine::find);
    connect(m_list, &QListView::clicked, this, [this](const QModelIndex& index) { choose(index, false); });
    connect(&library, &HelpLibrary::helpSetAboutToBeRemoved, this, &JumpLine::forget);
    connect(&library, &HelpLibrary::topRowsInserted, this, &JumpLine::findAgain);
    connect(&library.keywordIndex(), &KeywordIndex::rebuilt, this, &JumpLine::findAgain);
}

void JumpLine::buildLayout()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Margin, Margin, Margin, Margin);
    layout->setSpacing(Margin / 2);
    layout->addWidget(m_field);
    layout->addWidget(m_list);
    layout->addWidget(m_hint);
}

void JumpLine::open(std::vector<JumpTarget> nearby, const HelpContentsRoot* inUse)
{
    if (isHidden()) {
        m_before = QApplication::focusWidget();
    }
    m_search.begin(std::move(nearby), inUse);
    m_field->clear();
    find();
    show();
    raise();
    m_field->setFocus(Qt::ShortcutFocusReason);
}

void JumpLine::find()
{
    m_model->setTargets(m_search.find(m_field->text(), MaximumListed), m_search.pattern());
    const bool isEmpty = m_model->rowCount() == 0;
    m_list->setCurrentIndex(m_model->index(0, 0));
    m_list->scrollToTop();
    m_list->setHidden(isEmpty);
    m_hint->setHidden(!isEmpty);
    m_hint->setText(m_search.pattern().isEmpty()
                        ? tr("Type some letters of a title, in their order: “fip” finds “Find in Page”.")
                        : tr("Nothing is called so. Ctrl+Shift+F searches the text of all pages."));
    place();
}

/// More has been loaded; the row that was chosen stays chosen if it is still there.
void JumpLine::findAgain()
{
    if (isVisible()) {
        const QString chosen = m_list->currentIndex().data(Qt::AccessibleTextRole).toString();
        find();
        const auto rows =
            m_model->match(m_model->index(0, 0), Qt::AccessibleTextRole, chosen, 1, Qt::MatchExactly);
        m_list->setCurrentIndex(rows.isEmpty() ? m_model->index(0, 0) : rows.front());
    }
}

/// As wide and as high as needed, over the upper middle of the window.
void JumpLine::place()
{
    const int rows = std::min(ShownRows, m_model->rowCount());
    m_list->setFixedHeight(rows * std::max(1, m_list->sizeHintForRow(0)) + 2 * m_list->frameWidth());
    const int width = std::max(0, std::min(WidestLine, m_window.width() - 2 * WindowGap));
    layout()->activate();
    const int wanted = hasHeightForWidth() ? heightForWidth(width) : sizeHint().height();
    const int top = std::max(WindowGap, m_window.height() / 10);
    setGeometry((m_window.width() - width) / 2, top, width,
                std::min(wanted, m_window.height() - top - WindowGap));
}

void JumpLine::choose(const QModelIndex& index, bool isToSynchronize)
{
    if (!index.isValid()) {
        return;
    }
    const JumpTarget target = m_model->target(index);
    m_before = nullptr;
    forget();
    Q_EMIT chosen(target, isToSynchronize);
}

void JumpLine::close()
{
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    hide();
    if (hadFocus && m_before != nullptr) {
        m_before->setFocus(Qt::OtherFocusReason);
    }
    forget();
}

void JumpLine::forget()
{
    m_model->setTargets({}, {});
    m_search.end();
    hide();
}

bool JumpLine::keyPressed(int key, Qt::KeyboardModifiers modifiers)
{
    switch (key) {
    case Qt::Key_Escape:
        close();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose(m_list->currentIndex(), modifiers.testFlag(Qt::AltModifier));
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(m_list, &event);
        return true;
    }
    default:
        return false;
    }
}

bool JumpLine::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_window && event->type() == QEvent::Resize && isVisible()) {
        place();
    } else if (watched == m_field && event->type() == QEvent::ShortcutOverride &&
               static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        // Escape means other things elsewhere in the window.
        event->accept();
        return true;
    } else if (watched == m_field && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        return keyPressed(key->key(), key->modifiers());
    } else if (watched == m_field && event->type() == QEvent::FocusOut && isVisible() &&
               static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason &&
               static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
        close();
    }
    return QFrame::eventFilter(watched, event);
}
