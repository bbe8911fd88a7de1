// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

/// A page of the viewer's own, shown where a help set has none to show. All texts are plain.
struct BuiltinPage {
    struct Fact {
        QString name;
        QString value;
    };
    struct Link {
        QString text;
        QString note; ///< stands behind the link
    };

    QString title;
    QString text;
    std::vector<Fact> facts;
    std::vector<Link> links; ///< their targets are "item:0", "item:1" …

    /// At most MaximumLinks links are listed; the page says how many there are.
    [[nodiscard]] QString toHtml() const;

    static constexpr size_t MaximumLinks = 2000;
};
