// SPDX-License-Identifier: MIT
#include "mainwindow/jumps.h"

#include "browser/helpbrowser.h"
#include "desk/desk.h"
#include "index/helpindex.h"
#include "jump/jumpline.h"
#include "library/helplibrary.h"
#include "mainwindow/helpactions.h"

#include <QAction>

#include <utility>

Jumps::Jumps(HelpLibrary& library, Desk& desk, HelpIndex& index, const HelpActions& actions, QWidget& window)
    : QObject(&window), m_library(library), m_desk(desk), m_index(index), m_actions(actions), m_window(window)
{
    connect(actions.goJumpAction, &QAction::triggered, this, &Jumps::open);
}

void Jumps::open()
{
    if (m_line == nullptr) {
        m_line = new JumpLine(m_library, m_window);
        connect(m_line, &JumpLine::chosen, this, &Jumps::carryOut);
    }
    const auto* row = m_desk.currentRow();
    m_line->open(nearby(), row == nullptr ? nullptr : row->contentsItem->root());
}

/// What was read lately and the headings of the page in view.
std::vector<JumpTarget> Jumps::nearby() const
{
    std::vector<JumpTarget> targets;
    for (auto* record : m_desk.view().readLately()) {
        const auto* row = record->listViewItem;
        QString title = row == nullptr ? m_library.pageTitle(record->page()) : row->text.toString();
        targets.push_back(
            {.kind = JumpTarget::Kind::Read, .record = record, .row = row, .ownText = std::move(title)});
    }
    for (const auto& heading : m_desk.view().page().prepared.headings) {
        targets.push_back({.kind = JumpTarget::Kind::Heading,
                           .anchor = heading.anchor,
                           .ownText = heading.text.simplified()});
    }
    return targets;
}

void Jumps::carryOut(const JumpTarget& target, bool isToSynchronize)
{
    switch (target.kind) {
    case JumpTarget::Kind::Read:
        m_desk.show(target.record);
        break;
    case JumpTarget::Kind::Heading:
        m_desk.scrollTo(target.anchor);
        break;
    case JumpTarget::Kind::Row:
        m_desk.show(target.row->contentsItem);
        break;
    case JumpTarget::Kind::Keyword:
        m_index.open(*target.keyword);
        break;
    }
    m_desk.setFocus(Qt::OtherFocusReason);
    if (isToSynchronize) {
        m_actions.goSyncAction->trigger();
    }
}
