// SPDX-License-Identifier: MIT
#include "jump/jumpmodel.h"

#include <utility>

void JumpModel::setTargets(std::vector<JumpTarget> targets, const FuzzyPattern& pattern)
{
    beginResetModel();
    m_targets = std::move(targets);
    m_pattern = pattern;
    endResetModel();
}

const JumpTarget& JumpModel::target(const QModelIndex& index) const
{
    return m_targets[size_t(index.row())];
}

QString JumpModel::placeOf(const QModelIndex& index) const
{
    return jumpTargetPlace(target(index), m_library);
}

std::vector<int> JumpModel::letters(const QModelIndex& index) const
{
    return m_pattern.letters(target(index).text);
}

int JumpModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_targets.size());
}

QVariant JumpModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const QString text = target(index).text.toString();
    switch (role) {
    case Qt::DisplayRole:
        return text;
    case Qt::ToolTipRole:
        return QStringLiteral("<span>%1<br>%2</span>")
            .arg(text.toHtmlEscaped(), placeOf(index).toHtmlEscaped());
    case Qt::AccessibleTextRole:
        return QString(text + QStringLiteral(", ") + placeOf(index));
    default:
        return {};
    }
}
