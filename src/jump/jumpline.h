// SPDX-License-Identifier: MIT
#pragma once

#include "jump/jumpsearch.h"

#include <QFrame>
#include <QPointer>

class JumpModel;
class QLabel;
class QLineEdit;
class QListView;

/// A line that lies over a window, with a list of what is called like what is typed there. It goes when
/// something has been chosen, at Escape, or when the keyboard goes elsewhere.
class JumpLine : public QFrame {
    Q_OBJECT

public:
    /// The library must outlive it.
    JumpLine(HelpLibrary& library, QWidget& window);

    /// Shows it empty. `nearby` are targets with texts of their own, beside what the library holds, `inUse`
    /// is the help set read now.
    void open(std::vector<JumpTarget> nearby, const HelpContentsRoot* inUse);

Q_SIGNALS:
    /// `isToSynchronize`: the contents are to show the row, too.
    void chosen(const JumpTarget& target, bool isToSynchronize);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void find();
    void findAgain();
    void choose(const QModelIndex& index, bool isToSynchronize);
    void close();
    /// The targets go; the line does, too.
    void forget();
    void place();
    bool keyPressed(int key, Qt::KeyboardModifiers modifiers);

    QWidget& m_window;
    JumpSearch m_search;
    JumpModel* m_model;
    QLineEdit* m_field;
    QListView* m_list;
    QLabel* m_hint;
    QPointer<QWidget> m_before; ///< had the keyboard
};
