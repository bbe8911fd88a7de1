// SPDX-License-Identifier: MIT
#include "library/sharedbeginning.h"

#include <algorithm>

namespace {

constexpr qsizetype LeastShared = 4; // code units; the mark takes the room of two

qsizetype sharedWith(QStringView text, QStringView other)
{
    const auto [end, otherEnd] = std::mismatch(text.begin(), text.end(), other.begin(), other.end());
    return end - text.begin();
}

/// Where the last word begins that begins in what is shared; 0 for the first one. Blanks divide words, or
/// signs where there is no blank, so that numbers with points stay whole.
qsizetype lastWordIn(QStringView shared)
{
    if (const auto blank = shared.lastIndexOf(u' '); blank >= 0) {
        return blank + 1;
    }
    const auto sign = std::find_if(shared.rbegin(), shared.rend(), [](QChar letter) {
        return !letter.isLetterOrNumber() && !letter.isSurrogate();
    });
    return shared.rend() - sign;
}

} // namespace

QString withoutSharedBeginning(QStringView text, QStringView before, QStringView behind)
{
    const qsizetype longest = std::max(sharedWith(text, before), sharedWith(text, behind));
    const auto first = std::find_if(text.begin(), text.end(), [](QChar letter) { return letter != u' '; });
    const qsizetype indent = first - text.begin();
    if (longest <= indent || longest == text.size()) {
        return text.toString();
    }
    const qsizetype shared = lastWordIn(text.sliced(indent, longest - indent));
    if (shared < LeastShared) {
        return text.toString();
    }
    return text.first(indent) + QStringLiteral("…") + text.sliced(indent + shared);
}
