// SPDX-License-Identifier: MIT
#include "search/searchscope.h"

#include <QMenu>
#include <QStyle>
#include <QStyleOptionToolButton>

namespace {

QString withoutMnemonic(QString text)
{
    return text.replace(u'&', QStringLiteral("&&")).replace(u'\t', u' ');
}

} // namespace

SearchScope::SearchScope(QWidget* parent)
    : QToolButton(parent), m_menu(new QMenu(this)), m_allAction(m_menu->addAction(tr("&All help sets")))
{
    setAccessibleName(tr("Where to search"));
    setPopupMode(QToolButton::InstantPopup);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    setMenu(m_menu);
    m_menu->addSeparator();
    m_allAction->setCheckable(true);
    connect(m_allAction, &QAction::triggered, this, [this] {
        for (auto* action : std::as_const(m_setActions)) {
            action->setChecked(false);
        }
        choose();
    });
    setHelpSets({});
}

void SearchScope::setHelpSets(const QList<SearchableSet>& sets)
{
    const QStringList before = contentsFiles();
    qDeleteAll(m_setActions);
    m_setActions.clear();
    for (const auto& set : sets) {
        auto* action = m_menu->addAction(withoutMnemonic(set.title));
        action->setCheckable(true);
        action->setData(set.contentsFile);
        action->setChecked(before.contains(set.contentsFile));
        connect(action, &QAction::triggered, this, &SearchScope::choose);
        m_setActions.append(action);
    }
    setHidden(sets.size() < 2);
    showChoice();
}

QList<QAction*> SearchScope::chosen() const
{
    QList<QAction*> actions = m_setActions;
    actions.removeIf([](const QAction* action) { return !action->isChecked(); });
    return actions;
}

QStringList SearchScope::contentsFiles() const
{
    QStringList files;
    for (const auto* action : chosen()) {
        files.append(action->data().toString());
    }
    return files;
}

void SearchScope::choose()
{
    showChoice();
    Q_EMIT changed();
}

void SearchScope::showChoice()
{
    const auto actions = chosen();
    m_allAction->setChecked(actions.isEmpty());
    QStringList titles;
    for (const auto* action : actions) {
        titles.append(action->text().replace(QStringLiteral("&&"), QStringLiteral("&")));
    }
    const QString all = actions.isEmpty() ? tr("In all help sets") : tr("In %1").arg(titles.join(u", "));
    QStyleOptionToolButton option;
    initStyleOption(&option);
    const int frame = style()->pixelMetric(QStyle::PM_ButtonMargin, &option, this) +
                      style()->pixelMetric(QStyle::PM_MenuButtonIndicator, &option, this);
    setText(withoutMnemonic(fontMetrics().elidedText(all, Qt::ElideRight, width() - 2 * frame)));
    setToolTip(QStringLiteral("<span>") + all.toHtmlEscaped() + QStringLiteral("</span>"));
}

void SearchScope::resizeEvent(QResizeEvent* event)
{
    QToolButton::resizeEvent(event);
    showChoice();
}
