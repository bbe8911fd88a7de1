// SPDX-License-Identifier: MIT
#pragma once

#include "pages/pagecontext.h"

#include <QString>

#include <cstddef>
#include <string>
#include <vector>

/// A part of a page's text that has a heading, or a term that links lead to.
struct PlainSection {
    size_t begin = 0;     ///< in the text, bytes; where the heading begins
    size_t textBegin = 0; ///< behind the heading
    int level = 1;        ///< of headings, from 1; terms are below all of them
    std::string title;    ///< of the heading, in one line
    std::string anchor;   ///< of it or what it stands in; empty when there is none
};

/// Part of a page's text that is a link, in bytes.
struct PlainLink {
    size_t begin;
    size_t end;
};

/// What there is to read in a page, in UTF-8.
struct PlainPage {
    std::string title;
    std::string language; ///< as the page declares it, such as "en"
    std::string text;     ///< the main content; blocks end with a line end, blanks are as the page has them
    std::string headings; ///< of the main content, and terms that are explained, a line each
    size_t linkText = 0;  ///< bytes of the text that stand in links
    std::vector<PlainSection> sections; ///< in order, when they are wanted
    std::vector<PlainLink> links;       ///< in order, when sections are wanted
    QString base;                       ///< what relative targets start from
    std::vector<std::string> targets;   ///< of all links, as written, when they are wanted
};

enum class PlainParts {
    Text,
    TextAndSections,
    TextAndTargets,
};

/// Reads the text that preparePage() gives for the reading view, without writing HTML. Never fails.
/// Of the context, only the file and the style sheets count.
[[nodiscard]] PlainPage readPlainPage(QString html, const PageContext& context,
                                      PlainParts parts = PlainParts::Text);
