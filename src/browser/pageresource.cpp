// SPDX-License-Identifier: MIT
#include "browser/pageresource.h"

#include "pages/pagefile.h"
#include "sources/pagefiles.h"

namespace {

// Larger style sheets are written for web browsers: rich text follows little of them and takes seconds over
// it.
constexpr qint64 LargestStyleSheet = 4096; // bytes

} // namespace

QString loadStyleSheet(const QUrl& url)
{
    const QString file = url.isLocalFile() && url.host().isEmpty() ? url.toLocalFile() : QString();
    const auto state = file.isEmpty() ? std::nullopt : pageFileState(file);
    const bool isSmall = state && state->size <= LargestStyleSheet;
    const auto sheet = isSmall ? readPage(file) : Result<PageText, PageError>(PageError::TooLarge);
    // For a null value the document would open the file by itself, whatever it is.
    return sheet.ok() ? sheet.value().text : QStringLiteral("");
}
