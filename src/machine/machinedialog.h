// SPDX-License-Identifier: MIT
#pragma once

#include "library/backgroundtasks.h"
#include "machine/machinesets.h"

#include <QDialog>
#include <QStringList>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

/// Lists the documentation that is on the machine, found in the background, for the user to open and to keep.
class MachineDialog : public QDialog {
    Q_OBJECT

public:
    /// `open` are the help sets that are open already.
    MachineDialog(const QStringList& open, QWidget* parent);

Q_SIGNALS:
    void openRequested(const QStringList& names);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    void search();
    void showSets(const std::vector<MachineSet>& sets);
    void filter();
    void showState();
    void openChosen();
    void installChosen();
    void addFolder();
    void connectParts();
    void fitColumns();
    [[nodiscard]] QStringList ticked() const;
    /// What is ticked, else the current row.
    [[nodiscard]] QStringList chosen() const;

    QStringList m_open;
    QLineEdit* m_filter = nullptr;
    QTreeWidget* m_list = nullptr;
    QLabel* m_state = nullptr;
    QPushButton* m_openButton = nullptr;
    QPushButton* m_installButton = nullptr;
    QPushButton* m_folderButton = nullptr;
    BackgroundTasks m_tasks{BackgroundTasks::Priority::Normal};
};
