// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>

class QTextDocument;
class QUrl;

/// Link targets exactly as a page writes them. The text view keeps targets as URLs, which change letter case,
/// blanks and percent signs; so every target in the document is replaced by a code that a URL carries
/// unchanged.
namespace RawLinks {

/// Replaces all link targets of a document just set; returns the names of the anchors in it.
QSet<QString> protect(QTextDocument& document);

/// The target that the page wrote; empty for a URL that protect() did not make.
[[nodiscard]] QString target(const QUrl& url);

} // namespace RawLinks
