// SPDX-License-Identifier: MIT
#include "search/searchscope.h"

#include "library/tooltip.h"

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
    : QComboBox(parent), m_menu(new QMenu(this)), m_allAction(m_menu->addAction(tr("&All help sets"))),
      m_currentAction(m_menu->addAction(tr("The help set that is &read")))
{
    setAccessibleName(tr("Where to search"));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    addItem({}); // the choice in words
    m_menu->addSeparator();
    m_allAction->setCheckable(true);
    m_currentAction->setCheckable(true);
    connect(m_allAction, &QAction::triggered, this, [this] { choose({}); });
    connect(m_currentAction, &QAction::triggered, this, [this] { choose({CurrentSet.toString()}); });
    setHelpSets({});
}

void SearchScope::setHelpSets(const QList<SearchChoice>& sets)
{
    qDeleteAll(m_setActions);
    m_setActions.clear();
    for (const auto& set : sets) {
        auto* action = m_menu->addAction(menuText(set.title));
        action->setCheckable(true);
        action->setData(QStringList{set.contentsFile, set.title});
        connect(action, &QAction::triggered, this, [this] {
            QStringList files;
            for (const auto* chosenAction : chosen()) {
                files.append(chosenAction->data().toStringList().constFirst());
            }
            choose(files);
        });
        m_setActions.append(action);
    }
    setHidden(sets.size() < 2);
    showChoice();
}

void SearchScope::chooseOnly(const QString& contentsFile)
{
    // Where there is no choice, none is remembered for a time when there is.
    const bool isAlone =
        m_setActions.size() == 1 && m_setActions.front()->data().toStringList().constFirst() == contentsFile;
    choose(isAlone ? QStringList() : QStringList{contentsFile});
}

void SearchScope::setCurrent(const QString& contentsFile)
{
    if (contentsFile == m_current) {
        return;
    }
    m_current = contentsFile;
    if (m_currentAction->isChecked()) {
        showChoice();
        Q_EMIT changed();
    }
}

void SearchScope::setChoice(const QStringList& choice)
{
    m_choice = choice;
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
    if (m_currentAction->isChecked()) {
        return m_current.isEmpty() ? QStringList() : QStringList(m_current);
    }
    QStringList files;
    for (const auto* action : chosen()) {
        files.append(action->data().toStringList().constFirst());
    }
    return files;
}

void SearchScope::choose(const QStringList& choice)
{
    setChoice(choice);
    Q_EMIT changed();
}

void SearchScope::showChoice()
{
    QStringList titles;
    for (auto* action : std::as_const(m_setActions)) {
        const auto fileAndTitle = action->data().toStringList();
        action->setChecked(m_choice.contains(fileAndTitle.constFirst()));
        if (action->isChecked()) {
            titles.append(fileAndTitle.constLast());
        }
    }
    const bool isCurrent = m_choice.size() == 1 && m_choice.constFirst() == CurrentSet;
    m_currentAction->setChecked(isCurrent);
    m_allAction->setChecked(!isCurrent && titles.isEmpty());
    const QString text = isCurrent          ? tr("In the help set that is read")
                         : titles.isEmpty() ? tr("In all help sets")
                                            : tr("In %1").arg(titles.join(u", "));
    setItemText(0, text);
    setToolTip(plainToolTip(text));
}

/// A menu stands for the list, which could not have check marks.
void SearchScope::showPopup()
{
    m_menu->setMinimumWidth(width());
    m_menu->popup(mapToGlobal(QPoint(0, height())));
}
