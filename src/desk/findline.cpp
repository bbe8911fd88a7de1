// SPDX-License-Identifier: MIT
#include "desk/findline.h"

#include "browser/helpbrowser.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QToolButton>

#include <utility>

namespace {

constexpr int LineMargin = 3;    // pixels
constexpr int WidestField = 320; // pixels

} // namespace

FindLine::FindLine(HelpBrowser& browser, QWidget* parent)
    : QWidget(parent), m_browser(browser), m_matches(&browser, nullptr), m_field(new QLineEdit(this)),
      m_count(new QLabel(this))
{
    setObjectName(QStringLiteral("findLine"));
    m_field->setPlaceholderText(tr("Find in this page"));
    m_field->setAccessibleName(tr("Find in this page"));
    m_field->setMaximumWidth(WidestField);
    m_field->installEventFilter(this);
    m_count->setObjectName(QStringLiteral("findCount"));
    setFocusProxy(m_field);
    hide();
    buildLayout();
    connect(m_field, &QLineEdit::textChanged, this, &FindLine::search);
    connect(&m_matches, &PageMatches::counted, this, &FindLine::counted);
    connect(&browser, &PageView::pageChanged, this, &FindLine::pageChanged);
}

void FindLine::buildLayout()
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(LineMargin, LineMargin, LineMargin, LineMargin);
    layout->setSpacing(LineMargin);
    layout->addWidget(m_field, 3);
    const auto addButton = [this, layout](Qt::ArrowType arrow, const QString& toolTip, bool forward) {
        auto* button = new QToolButton(this);
        button->setAutoRaise(true);
        button->setArrowType(arrow);
        button->setToolTip(toolTip);
        button->setAccessibleName(toolTip);
        connect(button, &QToolButton::clicked, this, [this, forward] { step(forward); });
        layout->addWidget(button);
    };
    addButton(Qt::UpArrow, tr("Previous place (Shift+Enter)"), false);
    addButton(Qt::DownArrow, tr("Next place (Enter)"), true);
    layout->addWidget(m_count);
    layout->addStretch(1);
    auto* close = new QToolButton(this);
    close->setAutoRaise(true);
    close->setText(QStringLiteral("×"));
    close->setToolTip(tr("Close (Esc goes back to where you were)"));
    close->setAccessibleName(tr("Close"));
    connect(close, &QToolButton::clicked, this, &FindLine::finish);
    layout->addWidget(close);
}

void FindLine::open(const QString& text)
{
    if (isHidden()) {
        m_origin = m_browser.place();
        show();
    }
    m_field->setFocus(Qt::ShortcutFocusReason);
    if (text != m_field->text()) {
        m_field->setText(text);
    } else {
        search();
    }
    m_field->selectAll();
}

void FindLine::search()
{
    if (isHidden()) {
        return;
    }
    m_isToGoOn = true;
    m_goesForward = true;
    m_isFirst = true;
    m_browser.completePage();
    m_matches.search(m_field->text().replace(QChar::Nbsp, u' '), {});
    Q_EMIT soughtChanged(m_field->text());
}

void FindLine::counted()
{
    if (!std::exchange(m_isToGoOn, false)) {
        showCount({});
        return;
    }
    if (std::exchange(m_isFirst, false)) {
        QTextCursor cursor(m_browser.document());
        cursor.setPosition(m_origin);
        m_browser.setTextCursor(cursor);
    }
    if (m_matches.count() == 0) {
        m_browser.setPlace(m_origin);
    }
    step(m_goesForward);
}

void FindLine::step(bool forward)
{
    if (m_matches.isSearching()) {
        m_isToGoOn = true;
        m_goesForward = forward;
        return;
    }
    const int before = m_browser.textCursor().selectionStart();
    m_matches.step(forward);
    const int now = m_browser.textCursor().selectionStart();
    const bool isRound = forward ? now < before : now > before;
    showCount(!isRound || m_matches.count() < 1 ? QString()
              : forward                         ? tr("from the top")
                                                : tr("from the bottom"));
}

void FindLine::showCount(const QString& sign)
{
    const QLocale locale;
    if (m_field->text().isEmpty()) {
        m_count->clear();
    } else if (m_matches.count() == 0) {
        m_count->setText(tr("Not on this page"));
    } else {
        const QString number = locale.toString(m_matches.count());
        const QString count = tr("%1 of %2")
                                  .arg(locale.toString(m_matches.current()),
                                       m_matches.isCapped() ? tr("more than %1").arg(number) : number);
        m_count->setText(sign.isEmpty() ? count : count + QStringLiteral(", ") + sign);
    }
}

void FindLine::cancel()
{
    finish();
    m_browser.setPlace(m_origin);
}

void FindLine::finish()
{
    m_matches.clear();
    QTextCursor cursor = m_browser.textCursor();
    cursor.setPosition(cursor.selectionStart());
    m_browser.setTextCursor(cursor);
    hide();
    m_browser.setFocus(Qt::OtherFocusReason);
}

/// What is looked for is looked for in the next page, too.
void FindLine::pageChanged()
{
    if (!isHidden()) {
        m_origin = 0;
        m_count->clear();
        m_browser.completePage();
        m_matches.search(m_field->text(), {});
    }
}

bool FindLine::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            step(!key->modifiers().testFlag(Qt::ShiftModifier));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
