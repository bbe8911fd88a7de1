// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/database.h"
#include "fulltext/words.h"

#include <memory>
#include <string>

struct fts5_api;

/// The database of one help set's search:
///   pages   a row for each page; a page that has changed gets a new number
///   names   keys of titles and keywords and of parts of them, for queries that are just that
///   words   FTS5 without contents; it knows numbers of pages that are gone, too
namespace IndexFile {

/// No help set has nearly so many pages; numbers grow while pages come and go, until they are given anew.
inline constexpr int64_t LargestPageNumber = 1 << 24;

/// Opens a database of this format, and makes a new one of an empty or absent file. Null when that is not
/// possible, or when the file holds something else.
[[nodiscard]] std::unique_ptr<Database> open(const QByteArray& name);

/// Looks through all words. False when they make no sense; what cannot be looked at to its end counts as
/// sound.
[[nodiscard]] bool isSound(Database& database);

/// Forgets all pages. False on errors.
bool clear(Database& database);

/// Columns of `words`, the most usual one first: it costs a byte less for each word of each page.
enum Column { Body, Title, Keywords, Headings };

/// The form in which words are given to the database: a blank before each position, a control character
/// before further words at the same one.
void appendPrepared(std::string& prepared, const Words& words);
/// Before a further word at the position of the one before.
constexpr char SamePosition = '\1';

/// Of the connection; null without FTS5.
[[nodiscard]] fts5_api* fts5Api(Database& database);

/// What a key in `names` is the name of.
enum NameKind {
    TitleName,      ///< a whole page
    TitlePart,      ///< the last part of such a name
    KeywordName,    ///< a keyword, or a place in a page
    KeywordPart,    ///< the last part of such a name
    KeywordLiteral, ///< the same with its signs
    KeywordMember,  ///< the same with what it belongs to
    Initials,       ///< of a page's title
    FileName,       ///< of a page's file
};
/// The key of a name in `names`.
[[nodiscard]] int64_t keyOf(std::string_view name);

/// A number for a text that stays the same from run to run.
[[nodiscard]] int64_t hashOf(std::string_view text, uint64_t seed = 0);

} // namespace IndexFile
