// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

struct HelpContentsItem;

/// One row of the contents tree: plain data, linked both ways with its record and shown through a model.
struct HelpContentsListViewItem {
    QString text;
    HelpContentsItem* contentsItem = nullptr;
    HelpContentsListViewItem* parent = nullptr; ///< null for top-level rows
    std::vector<HelpContentsListViewItem*> children;
    int position = 0; ///< among its siblings
};
