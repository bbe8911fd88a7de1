// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

/// A submenu of help sets. Entries have ids, counted from 1 and never used again; the menu is enabled exactly
/// when it has an entry. Long texts are shortened on the screen only.
class HelpSetMenu : public QMenu {
    Q_OBJECT

public:
    explicit HelpSetMenu(const QString& title, QWidget* parent = nullptr);

    /// Appends an entry with this title, shown as plain text, and the path of its contents file as tool tip;
    /// returns its id.
    int addEntry(const QString& title, const QString& fileName);
    void removeEntry(int id);

Q_SIGNALS:
    void chosen(int id);

protected:
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;

private:
    int m_lastId = 0;
};
