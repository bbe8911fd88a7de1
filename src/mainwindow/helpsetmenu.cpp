// SPDX-License-Identifier: MIT
#include "mainwindow/helpsetmenu.h"

namespace {

constexpr qsizetype LongestText = 80; // characters

/// Without mnemonics or a shortcut column, cut when very long.
QString entryText(const QString& title)
{
    QString text = title.simplified();
    if (text.size() > LongestText) {
        text = text.first(LongestText - 1) + QChar(0x2026);
    }
    return text.replace(u'&', QStringLiteral("&&"));
}

} // namespace

HelpSetMenu::HelpSetMenu(const QString& title, QWidget* parent) : QMenu(title, parent)
{
    setEnabled(false);
}

int HelpSetMenu::addEntry(const QString& title)
{
    const int id = ++m_lastId;
    auto* action = addAction(entryText(title), this, [this, id] { Q_EMIT chosen(id); });
    action->setData(id);
    setEnabled(true);
    return id;
}

void HelpSetMenu::removeEntry(int id)
{
    for (auto* action : actions()) {
        if (action->data().toInt() == id) {
            removeAction(action);
            // It may be the one whose triggering led here.
            action->deleteLater();
        }
    }
    setEnabled(!isEmpty());
}
