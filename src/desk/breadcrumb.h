// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <vector>

class HelpLibrary;
class QMenu;
class QToolButton;
struct HelpContentsItem;
struct HelpContentsListViewItem;

/// The line above the page that says where it stands: help set, books, topic. Each part opens its page, the
/// arrow beside it lists what stands next to it. The library must outlive it.
class Breadcrumb : public QWidget {
    Q_OBJECT

public:
    Breadcrumb(HelpLibrary& library, QWidget* parent);

    /// Shows the way to this row; without a row it is hidden.
    void setRow(const HelpContentsListViewItem* row);

    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user wants this record's page.
    void chosen(HelpContentsItem* record);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// What a part leads to, and the rows or help sets that stand beside it.
    struct Part {
        QString text;
        HelpContentsItem* record = nullptr;
        const HelpContentsListViewItem* row = nullptr; ///< null for the help set
    };

    [[nodiscard]] std::vector<Part> partsOf(const HelpContentsListViewItem& row) const;
    void showPart(size_t number, const Part& part);
    QToolButton* addButton();
    void fillMenu(QMenu& menu, const Part& part);
    void fillWithHelpSets(QMenu& menu, const Part& part);
    void addEntry(QMenu& menu, const QString& text, HelpContentsItem* record, bool isCurrent);
    /// Shortens the longest texts until all fit the width.
    void fit();

    HelpLibrary& m_library;
    std::vector<Part> m_parts;
    std::vector<QToolButton*> m_buttons; ///< as many as have been needed, each with its menu
    const HelpContentsListViewItem* m_row = nullptr;
};
