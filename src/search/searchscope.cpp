// SPDX-License-Identifier: MIT
#include "search/searchscope.h"

#include <QMenu>

#include <algorithm>
#include <utility>

namespace {

/// The text as a menu shows it unchanged.
QString menuText(QString text)
{
    return text.replace(u'&', QStringLiteral("&&")).replace(u'\t', u' ');
}

} // namespace

SearchScope::SearchScope(QWidget* parent)
    : QComboBox(parent), m_menu(new QMenu(this)), m_allAction(m_menu->addAction(tr("&All help sets")))
{
    setAccessibleName(tr("Where to search"));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    addItem({}); // the choice in words
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

void SearchScope::setHelpSets(const QList<SearchChoice>& sets)
{
    const QStringList before = contentsFiles();
    qDeleteAll(m_setActions);
    m_setActions.clear();
    for (const auto& set : sets) {
        auto* action = m_menu->addAction(menuText(set.title));
        action->setCheckable(true);
        action->setData(QStringList{set.contentsFile, set.title});
        action->setChecked(before.contains(set.contentsFile));
        connect(action, &QAction::triggered, this, &SearchScope::choose);
        m_setActions.append(action);
    }
    setHidden(sets.size() < 2);
    showChoice();
    if (!m_wanted.isNull()) {
        chooseOnly(m_wanted);
    }
}

void SearchScope::chooseOnly(const QString& contentsFile)
{
    const auto isWanted = [&](const QAction* action) {
        return action->data().toStringList().constFirst() == contentsFile;
    };
    m_wanted = contentsFile;
    if (std::none_of(m_setActions.begin(), m_setActions.end(), isWanted)) {
        return;
    }
    m_wanted = QString();
    for (auto* action : std::as_const(m_setActions)) {
        action->setChecked(isWanted(action));
    }
    choose();
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
        files.append(action->data().toStringList().constFirst());
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
    QStringList titles;
    for (const auto* action : chosen()) {
        titles.append(action->data().toStringList().constLast());
    }
    m_allAction->setChecked(titles.isEmpty());
    const QString text = titles.isEmpty() ? tr("In all help sets") : tr("In %1").arg(titles.join(u", "));
    setItemText(0, text);
    setToolTip(QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>"));
}

/// A menu stands for the list, which could not have check marks.
void SearchScope::showPopup()
{
    m_menu->setMinimumWidth(width());
    m_menu->popup(mapToGlobal(QPoint(0, height())));
}
