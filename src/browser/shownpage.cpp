// SPDX-License-Identifier: MIT
#include "browser/shownpage.h"

#include "pages/pagepreparation.h"

#include <QFileInfo>

bool ShownPage::isOf(const QString& name) const
{
    return !file.isEmpty() && file == QFileInfo(name).absoluteFilePath() && state == pageFileState(name);
}

bool ShownPage::hasInSource(const QString& text) const
{
    if (!isCut) {
        return source.text.contains(text);
    }
    const auto whole = readPage(file);
    return whole.ok() && whole.value().text.contains(text);
}

/// The text of a page of 50 MB would take 100.
void ShownPage::dropRest()
{
    constexpr qsizetype kept = LargestPage + 1; // enough to be the beginning of a page
    if (!file.isEmpty() && source.text.size() > kept) {
        source.text = source.text.first(kept);
        isCut = true;
    }
}

void ShownPage::readRest()
{
    if (!isCut) {
        return;
    }
    if (auto whole = readPage(file); whole.ok()) {
        source = whole.take();
        state = pageFileState(file);
        isCut = false;
    }
}
