// SPDX-License-Identifier: MIT
#include "fulltext/compounds.h"

#include "fulltext/foldedcharacters.h"

#include <algorithm>
#include <vector>

namespace {

enum class Writing {
    Hiragana,
    Katakana,
    OtherDense,
    Letters,
};

Writing writingOf(QChar c)
{
    const char16_t code = c.unicode();
    if (code >= 0x3040 && code <= 0x309F) {
        return Writing::Hiragana;
    }
    if ((code >= 0x30A0 && code <= 0x30FF) || (code >= 0xFF66 && code <= 0xFF9F)) {
        return Writing::Katakana;
    }
    const bool isDense = c.isSurrogate() || kindOf(code) == CharacterKind::Dense;
    return isDense ? Writing::OtherDense : Writing::Letters;
}

struct Run {
    Writing writing;
    QString text;
};

std::vector<Run> runsOf(const QString& text)
{
    std::vector<Run> runs;
    for (const QChar c : text) {
        const Writing writing = writingOf(c);
        if (runs.empty() || runs.back().writing != writing) {
            runs.push_back({writing, {}});
        }
        runs.back().text += c;
    }
    return runs;
}

bool isLone(const Run& run)
{
    return run.writing == Writing::OtherDense && run.text.size() == 1;
}

/// Most words of Chinese characters have two of them.
bool isTwoWords(const Run& run)
{
    return run.writing == Writing::OtherDense && run.text.size() >= 4 && run.text.size() % 2 == 0 &&
           std::all_of(run.text.begin(), run.text.end(),
                       [](QChar c) { return c.unicode() >= 0x4E00 && c.unicode() <= 0x9FFF; });
}

/// Whether what stands before and behind, however short, is one word with it.
bool continues(const std::vector<Run>& runs, size_t i)
{
    return i > 0 && (runs[i].writing == Writing::Hiragana || runs[i].writing == Writing::OtherDense) &&
           (isLone(runs[i - 1]) ||
            (runs[i - 1].writing == Writing::Hiragana && i > 1 && isLone(runs[i - 2]) && isLone(runs[i])));
}

} // namespace

QStringList compoundParts(const QString& text)
{
    const auto runs = runsOf(text);
    if (runs.size() == 1 && !isTwoWords(runs.front())) {
        return {text};
    }
    const bool isCompound =
        std::any_of(runs.begin(), runs.end(), [](const Run& run) { return run.writing != Writing::Letters; });
    if (!isCompound) {
        return {text};
    }
    QStringList parts;
    for (size_t i = 0; i < runs.size(); ++i) {
        if (!parts.isEmpty() && continues(runs, i)) {
            parts.back() += runs[i].text;
        } else if (isTwoWords(runs[i])) {
            for (qsizetype at = 0; at < runs[i].text.size(); at += 2) {
                parts += runs[i].text.sliced(at, 2);
            }
        } else if (runs[i].writing != Writing::Hiragana) {
            parts += runs[i].text;
        }
    }
    return parts.isEmpty() ? QStringList{text} : parts;
}
