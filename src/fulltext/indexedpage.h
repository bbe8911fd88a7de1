// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/commonbeginnings.h"
#include "fulltext/indexfile.h"
#include "fulltext/sourcepages.h"
#include "fulltext/words.h"

#include <QString>

#include <array>
#include <cstdint>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

class StyleSheets;

/// A page as it goes into the database.
struct IndexedPage {
    std::string path; ///< UTF-8, as are all texts
    int64_t size = 0;
    int64_t time = 0;
    int64_t names = 0;  ///< hash of the titles and keywords that lead to it
    int64_t hash = 0;   ///< of what there is to read in it; 0 when that is nothing
    uint32_t words = 0; ///< in its text
    uint32_t titleWords = 0;
    uint32_t headingWords = 0;
    uint32_t keywordWords = 0;
    std::string language;               ///< such as "de"; empty when it is not known
    int linkShare = 0;                  ///< percentage of the text that stands in links
    std::string title;                  ///< its own
    std::array<std::string, 4> columns; ///< prepared words, by IndexFile::Column
    struct Name {
        int64_t key; ///< IndexFile::keyOf()
        std::string anchor;
        IndexFile::NameKind kind;
    };
    std::vector<Name> exactNames;
    std::string targets;                 ///< pages that only links lead to, see linkTargets()
    std::vector<std::string> titleNames; ///< what it is called, see EntryName
    QString error;                       ///< why there is no text; null when there is
    bool isUnread = false;               ///< there may be text that could not be read this time

    /// Bytes, about.
    [[nodiscard]] size_t memory() const
    {
        size_t bytes = path.size() + title.size() + targets.size();
        for (const auto& column : columns) {
            bytes += column.size();
        }
        return bytes;
    }
};

/// Hash of the titles and keywords that lead to a page; `seed` is that of the common beginnings.
[[nodiscard]] int64_t hashOfNames(const SearchSource& source, const SourcePage& page, uint64_t seed);

/// Makes pages ready for the database, one after the other.
class PageReader {
public:
    /// What is read when a stop is asked for is of no use.
    PageReader(const SearchSource& source, const SourcePages& named, StyleSheets& styleSheets,
               std::stop_token stop)
        : m_source(source), m_named(named), m_styleSheets(styleSheets), m_stop(std::move(stop)),
          m_beginnings(source)
    {
    }

    [[nodiscard]] IndexedPage read(const SourcePage& page);

private:
    void addNames(QStringView text, const std::string& anchor, bool isTopic, bool isTitle,
                  IndexedPage& result) const;
    void readNames(const SourcePage& page, IndexedPage& result);
    void readText(const SourcePage& page, IndexedPage& result);
    template <typename Use>
    void readWords(std::string_view text, Use use);
    uint32_t addColumn(std::string_view text, std::string& column);

    const SearchSource& m_source;
    const SourcePages& m_named;
    StyleSheets& m_styleSheets;
    std::stop_token m_stop;
    CommonBeginnings m_beginnings;
    Words m_words;
};
