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

/// Blanks divide words, or signs where there is no blank, so that numbers with points stay whole.
bool divides(QChar letter, bool hasBlanks)
{
    return hasBlanks ? letter == u' ' : !letter.isLetterOrNumber() && !letter.isSurrogate();
}

} // namespace

QString withoutSharedBeginning(QStringView text, QStringView before, QStringView behind,
                               const std::function<bool(const QString&)>& fits)
{
    const qsizetype longest = std::max(sharedWith(text, before), sharedWith(text, behind));
    const auto first = std::find_if(text.begin(), text.end(), [](QChar letter) { return letter != u' '; });
    const qsizetype indent = first - text.begin();
    QString result = text.toString();
    if (longest <= indent || longest == text.size()) {
        return result;
    }
    const QStringView shared = text.sliced(indent, longest - indent);
    const bool hasBlanks = shared.contains(u' ');
    for (qsizetype end = LeastShared; end <= shared.size(); ++end) {
        if (divides(shared[end - 1], hasBlanks)) {
            result = text.first(indent) + QStringLiteral("…") + text.sliced(indent + end);
            if (fits(result)) {
                break;
            }
        }
    }
    return result;
}
