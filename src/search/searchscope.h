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

/// Lets the user choose the help sets to search: all of them, or some, in a menu with check marks. Visible
/// when there is a choice.
class SearchScope : public QComboBox {
    Q_OBJECT

public:
    explicit SearchScope(QWidget* parent);

    /// The help sets that there are; those chosen before stay chosen.
    void setHelpSets(const QList<SearchChoice>& sets);
    /// The contents files chosen; empty for all.
    [[nodiscard]] QStringList contentsFiles() const;

    /// Chooses this one, as soon as it is there.
    void chooseOnly(const QString& contentsFile);

    void showPopup() override;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QList<QAction*> chosen() const;
    void choose();
    void showChoice();

    QMenu* m_menu;
    QAction* m_allAction;
    QList<QAction*> m_setActions;
    QString m_wanted; ///< to be chosen when it is there; null for none
};
