// SPDX-License-Identifier: MIT
#include "browser/pageanchors.h"

#include "pages/preparedpage.h"

#include <QTextBlock>
#include <QTextDocument>

namespace PageAnchors {

namespace {

/// Calls `use` with each anchor name of a document and its position until it returns true.
template <typename Use>
void anyAnchor(const QTextDocument& document, Use use)
{
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
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

bool contains(const QTextDocument& document, const QString& name)
{
    bool found = false;
    anyAnchor(document, [&](const QString& anchor, int /*position*/) {
        found = anchor == name;
        return found;
    });
    return found;
}

QString before(const QTextDocument& document, int position)
{
    QString last;
    anyAnchor(document, [&](const QString& anchor, int place) {
        const bool isBeyond = place > position;
        last = isBeyond || isHeadingAnchor(anchor) ? last : anchor;
        return isBeyond;
    });
    return last;
}

} // namespace PageAnchors
