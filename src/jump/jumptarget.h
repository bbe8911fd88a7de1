// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

class HelpLibrary;
struct HelpContentsItem;
struct HelpContentsListViewItem;
struct HelpIndexItem;

/// What one can jump to. Valid until a help set goes or the keyword rows are made anew.
struct JumpTarget {
    enum class Kind { Read, Heading, Row, Keyword };

    Kind kind = Kind::Row;
    QStringView text = {};
    HelpContentsItem* record = nullptr;            ///< of a page that was read
    const HelpContentsListViewItem* row = nullptr; ///< of the contents
    const HelpIndexItem* keyword = nullptr;        ///< of several topics the first one
    QString anchor = {};                           ///< of a heading in the page in view
    QString ownText = {};                          ///< what `text` views when nothing else holds it
};

/// What tells a target from others with its text: of which kind it is and where it stands.
[[nodiscard]] QString jumpTargetPlace(const JumpTarget& target, HelpLibrary& library);
