// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

/// A submenu of help sets. Entries have ids, counted from 1 and never used again; the menu is enabled exactly
/// when it has an entry.
class HelpSetMenu : public QMenu {
    Q_OBJECT

public:
    explicit HelpSetMenu(const QString& title, QWidget* parent = nullptr);

    /// Appends an entry with this title, shown as plain text; returns its id.
    int addEntry(const QString& title);
    void removeEntry(int id);

Q_SIGNALS:
    void chosen(int id);

private:
    int m_lastId = 0;
};
