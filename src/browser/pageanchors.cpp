// SPDX-License-Identifier: MIT
#include "browser/pageanchors.h"

#include "pages/linkcode.h"

#include <QTextBlock>
#include <QTextDocument>

namespace PageAnchors {

namespace {

/// Calls `use` with each anchor name from a block on and its position until it returns true.
template <typename Use>
void anyAnchor(const QTextBlock& first, Use use)
{
    for (QTextBlock block = first; block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const auto names = fragment.charFormat().anchorNames();
            for (const auto& name : names) {
                if (use(name, fragment.position())) {
                    return;
                }
            }
        }
    }
}

} // namespace

int find(const QTextDocument& document, const QString& name, int position)
{
    int found = -1;
    anyAnchor(document.findBlock(position), [&](const QString& anchor, int place) {
        found = anchor == name ? place : -1;
        return found >= 0;
    });
    return found;
}

QString before(const QTextDocument& document, int position)
{
    QString last;
    anyAnchor(document.begin(), [&](const QString& anchor, int place) {
        const bool isBeyond = place > position;
        last = isBeyond || isHeadingAnchor(anchor) ? last : anchor;
        return isBeyond;
    });
    return last;
}

QString lastOf(const QTextDocument& document, int position,
               const std::function<bool(const QString& name)>& isWanted)
{
    constexpr int mostLookedAt = 10'000;
    QString last;
    int looked = 0;
    for (auto block = document.findBlock(position);
         block.isValid() && last.isEmpty() && looked < mostLookedAt; block = block.previous(), ++looked) {
        for (auto it = block.begin(); !it.atEnd() && it.fragment().position() <= position; ++it) {
            const auto names = it.fragment().charFormat().anchorNames();
            for (const auto& name : names) {
                last = isWanted(name) ? name : last;
            }
        }
    }
    return last;
}

} // namespace PageAnchors
