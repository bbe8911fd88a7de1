// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QToolButton>

class QAction;
class QActionGroup;
class QMenu;

/// A help set that can be searched.
struct SearchableSet {
    QString contentsFile; ///< absolute path
    QString title;        ///< plain text
};

/// Lets the user choose the help sets to search: all of them, or some. Visible when there is a choice.
class SearchScope : public QToolButton {
    Q_OBJECT

public:
    explicit SearchScope(QWidget* parent);

    /// The help sets that there are; those chosen before stay chosen.
    void setHelpSets(const QList<SearchableSet>& sets);
    /// The contents files chosen; empty for all.
    [[nodiscard]] QStringList contentsFiles() const;

Q_SIGNALS:
    void changed();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QList<QAction*> chosen() const;
    void choose();
    void showChoice();

    QMenu* m_menu;
    QAction* m_allAction;
    QList<QAction*> m_setActions;
};
