// SPDX-License-Identifier: MIT
#pragma once

#include "desk/libraryentry.h"

#include <QTreeWidget>

#include <optional>
#include <vector>

/// The help sets of the library page, in sections by their kinds.
class LibraryList : public QTreeWidget {
    Q_OBJECT

public:
    explicit LibraryList(QWidget* parent);

    /// In the order in which they are to be shown; kinds stand together. The current one stays so.
    void setEntries(const std::vector<LibraryEntry>& entries);
    /// What is known of a help set by now, wherever it is listed; its kind does not matter.
    void setFacts(const LibraryEntry& facts);
    [[nodiscard]] const std::vector<LibraryEntry>& entries() const { return m_entries; }
    /// None when no help set is current.
    [[nodiscard]] std::optional<LibraryEntry> current() const;
    /// Shows only those whose title or place contains this.
    void filter(const QString& text);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QTreeWidgetItem* addSection(LibraryEntry::Kind kind);
    static void describe(QTreeWidgetItem& row, const LibraryEntry& entry);
    [[nodiscard]] QTreeWidgetItem* rowOf(LibraryEntry::Kind kind, const QString& fileName) const;
    void fitColumns();

    std::vector<LibraryEntry> m_entries;
};
