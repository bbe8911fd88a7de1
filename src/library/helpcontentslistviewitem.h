// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

#include <span>

struct HelpContentsItem;

/// One row of the contents tree: plain data, linked both ways with its record and shown through a model.
struct HelpContentsListViewItem {
    QStringView text; ///< in a text of the help set
    HelpContentsItem* contentsItem = nullptr;
    HelpContentsListViewItem* parent = nullptr; ///< null for top-level rows
    std::span<HelpContentsListViewItem* const> children;
    int position = 0; ///< among its siblings
};
