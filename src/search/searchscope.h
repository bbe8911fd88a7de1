// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QStringList>

class QAction;
class QMenu;

/// A help set that can be searched.
struct SearchChoice {
    QString contentsFile; ///< absolute path
    QString title;        ///< plain text
};

/// Lets the user choose the help sets to search: all of them, the one that is read, or some, in a menu with
/// check marks. Visible when there is a choice.
class SearchScope : public QComboBox {
    Q_OBJECT

public:
    explicit SearchScope(QWidget* parent);

    /// The help sets that there are; those chosen before stay chosen.
    void setHelpSets(const QList<SearchChoice>& sets);
    /// The contents file of the help set that is read; empty for none.
    void setCurrent(const QString& contentsFile);
    /// The contents files chosen; empty for all.
    [[nodiscard]] QStringList contentsFiles() const;

    /// Chooses this one, as soon as it is there.
    void chooseOnly(const QString& contentsFile);

    /// What the user chose last, to be remembered: contents files, whether or not they are there, or
    /// CurrentSet.
    [[nodiscard]] const QStringList& choice() const { return m_choice; }
    void setChoice(const QStringList& choice);
    /// Stands for the help set that is read.
    static constexpr QStringView CurrentSet = u".";

    void showPopup() override;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QList<QAction*> chosen() const;
    void choose(const QStringList& choice);
    void showChoice();

    QMenu* m_menu;
    QAction* m_allAction;
    QAction* m_currentAction;
    QString m_current; ///< contents file
    QStringList m_choice;
    QList<QAction*> m_setActions;
};
