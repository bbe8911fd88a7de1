// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <vector>

class Desk;
class HelpIndex;
class HelpLibrary;
class JumpLine;
struct HelpActions;
struct JumpTarget;

/// Opens the line for jumping over a window, and says what its choice means there.
class Jumps : public QObject {
    Q_OBJECT

public:
    /// All of them must outlive it, and belong to the window.
    Jumps(HelpLibrary& library, Desk& desk, HelpIndex& index, const HelpActions& actions, QWidget& window);

private:
    void open();
    [[nodiscard]] std::vector<JumpTarget> nearby() const;
    void carryOut(const JumpTarget& target, bool isToSynchronize);

    HelpLibrary& m_library;
    Desk& m_desk;
    HelpIndex& m_index;
    const HelpActions& m_actions;
    QWidget& m_window;
    JumpLine* m_line = nullptr; ///< made when it is first opened
};
