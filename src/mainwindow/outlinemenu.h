// SPDX-License-Identifier: MIT
#pragma once

#include "pages/preparedpage.h"

#include <QMenu>

#include <vector>

/// The headings of the page shown, as a submenu; enabled when there are any.
class OutlineMenu : public QMenu {
    Q_OBJECT

public:
    OutlineMenu(const QString& title, QWidget* parent);

    void setHeadings(const std::vector<PageHeading>& headings);

    /// More headings than this would not fit a screen; the least important ones are left out first.
    static constexpr size_t MaximumEntries = 60;

Q_SIGNALS:
    /// The user wants to go to the heading with this anchor.
    void chosen(const QString& anchor);

private:
    void fill();

    std::vector<PageHeading> m_headings;
};
