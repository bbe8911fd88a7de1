// SPDX-License-Identifier: MIT
#pragma once

#include "formats/contentsoutline.h"
#include "formats/indexreader.h"

#include <stop_token>

/// What the keywords of one file of a help set share.
struct KeywordFile {
    QString fileName;
    QString directory; ///< that the pages are relative to; ends with "/"
    QString title;     ///< of the help set; null when unknown
    QString namedIn;   ///< the file that names this one
    int namedInLine = 0;
};

/// Takes what is read of a help set behind its contents: keywords, and titles of rows.
class KeywordSink {
public:
    KeywordSink() = default;
    Q_DISABLE_COPY_MOVE(KeywordSink)
    virtual ~KeywordSink() = default;

    /// The keywords that follow, about so many, stand in this file.
    virtual void begin(const KeywordFile& file, size_t atMost) = 0;
    /// Keeps a text for as long as the keywords that view into it.
    virtual QStringView keep(const QString& text) = 0;
    /// False when there are too many; then no more are to come.
    virtual bool add(const IndexLine& line) = 0;
    /// The title of an entry of the outline, by its number, which had a provisional one.
    virtual void retitle(int entry, const QString& title) = 0;
    virtual void note(const Problem& problem) = 0;
    /// What the file named last has more is not read.
    virtual void leaveOutRest(const KeywordFile& file) = 0;
};

/// Where a help set comes from: one kind of documentation, read where it lies. Each object is used by one
/// thread at a time, and touches nothing but its files.
class Source {
public:
    Source() = default;
    Q_DISABLE_COPY_MOVE(Source)
    virtual ~Source() = default;

    /// Once, before all else. Never fails: what cannot be read is missing and listed among the problems. Once
    /// a stop has been asked for, the outline ends anywhere.
    [[nodiscard]] virtual ContentsOutline readContents(const std::stop_token& stop) = 0;
    /// Once. After a stop has been asked for, keywords and titles are missing.
    virtual void readKeywords(KeywordSink& sink, const std::stop_token& stop) = 0;
};
