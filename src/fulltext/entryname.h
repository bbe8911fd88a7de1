// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

#include <string>
#include <string_view>
#include <vector>

/// What a title, a keyword or a query is the name of, folded and without blanks and signs, so that "hash
/// map", "hash_map" and "HashMap" are the same. All may be empty.
struct EntryName {
    std::string whole;               ///< of "5.2. Paths — an overview": "pathsanoverview"
    std::string head;                ///< without explanations and arguments: "paths"
    std::string last;                ///< of "std::vector::push_back" the last part: "pushback"
    std::vector<std::string> owners; ///< what the last part may belong to: "vector", "thread"
    std::string literal; ///< the head with its signs, where it begins or ends with some: "->>", "operator<<"
    std::vector<std::string> initials; ///< of several words: "wal" of "Write-Ahead Logging"
    int parts = 1;                     ///< of a qualified name
};

/// Knows numbers of chapters, arguments in brackets, and what stands behind dashes and commas.
[[nodiscard]] EntryName readEntryName(QStringView text);

/// Letters and digits of a text, folded.
[[nodiscard]] std::string squeezed(QStringView text);

/// Whether an anchor, in UTF-8, ends with the squeezed names of a place and of what it belongs to:
/// "#module.Class.method" with "classmethod".
[[nodiscard]] bool saysOwner(std::string_view anchor, std::string_view member);
