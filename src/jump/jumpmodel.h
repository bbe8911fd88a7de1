// SPDX-License-Identifier: MIT
#pragma once

#include "jump/fuzzypattern.h"
#include "jump/jumptarget.h"

#include <QAbstractListModel>

#include <vector>

/// The targets found, as rows: their text, and in ToolTipRole where they stand.
class JumpModel : public QAbstractListModel {
    Q_OBJECT

public:
    /// The library must outlive it.
    JumpModel(HelpLibrary& library, QObject* parent) : QAbstractListModel(parent), m_library(library) {}

    void setTargets(std::vector<JumpTarget> targets, const FuzzyPattern& pattern);
    [[nodiscard]] const JumpTarget& target(const QModelIndex& index) const;
    [[nodiscard]] QString placeOf(const QModelIndex& index) const;
    /// The letters of a row's text that match, in order.
    [[nodiscard]] std::vector<int> letters(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    HelpLibrary& m_library;
    std::vector<JumpTarget> m_targets;
    FuzzyPattern m_pattern;
};
