// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/searchsource.h"

#include <QStringList>
#include <QStringView>

#include <cstdint>

/// What many titles of a help set begin with, which says nothing within it: "Gtk" of "GtkButton", "git-" of
/// "git-log".
class CommonBeginnings {
public:
    /// Looks at some thousand titles.
    explicit CommonBeginnings(const SearchSource& source);

    /// What is behind such a beginning, with or without the sign that ends it ("gitglossary"); empty when the
    /// title has none.
    [[nodiscard]] QStringView rest(QStringView title) const;
    /// Changes with what they are.
    [[nodiscard]] uint64_t hash() const { return m_hash; }

private:
    QStringList m_beginnings;
    uint64_t m_hash = 0;
};
