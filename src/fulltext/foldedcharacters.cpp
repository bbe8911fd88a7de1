// SPDX-License-Identifier: MIT
#include "fulltext/foldedcharacters.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <vector>

namespace {

constexpr char32_t TableEnd = 0x2000; // Latin, Greek, Cyrillic, Hebrew, Arabic …

struct Range {
    char32_t first;
    char32_t last;
};

/// Thai, Lao, Burmese, Khmer, kana, Chinese characters, Korean syllables.
constexpr std::array<Range, 11> DenseRanges{{{0x0E00, 0x0EFF},
                                             {0x1000, 0x109F},
                                             {0x1100, 0x11FF},
                                             {0x1780, 0x17FF},
                                             {0x3005, 0x3007},
                                             {0x3040, 0x31FF},
                                             {0x3400, 0x4DBF},
                                             {0x4E00, 0x9FFF},
                                             {0xAC00, 0xD7AF},
                                             {0xF900, 0xFAFF},
                                             {0x20000, 0x3FFFF}}};

/// What stays of a character when it is taken apart: no accents, none of the blanks that stand for their
/// ground.
bool isKept(char32_t part)
{
    return QChar::isLetterOrNumber(part) || part == U'_' ||
           QChar::category(part) == QChar::Mark_SpacingCombining;
}

CharacterKind findKind(char32_t character)
{
    const auto holds = [character](const Range& range) {
        return character >= range.first && character <= range.last;
    };
    const auto category = QChar::category(character);
    const bool isInWords = QChar::isLetterOrNumber(character) || QChar::isMark(character) ||
                           category == QChar::Other_Format || character == U'_';
    if (!isInWords) {
        return CharacterKind::Separator;
    }
    return std::any_of(DenseRanges.begin(), DenseRanges.end(), holds) ? CharacterKind::Dense
                                                                      : CharacterKind::Letter;
}

std::string fold(char32_t character)
{
    const QString whole = QString::fromUcs4(&character, 1).normalized(QString::NormalizationForm_KD);
    QString bare;
    for (const char32_t part : whole.toUcs4()) {
        if (isKept(part)) {
            bare += QString::fromUcs4(&part, 1);
        }
    }
    // Only upper case makes two letters of "ß".
    return bare.toUpper().toCaseFolded().toStdString();
}

/// What is known of the usual characters.
struct Table {
    Table()
    {
        for (char32_t character = 0; character < TableEnd; ++character) {
            kinds.push_back(findKind(character));
            folded.push_back(kinds.back() == CharacterKind::Letter
                                 ? fold(character)
                                 : QString::fromUcs4(&character, 1).toStdString());
        }
    }
    std::vector<CharacterKind> kinds;
    std::vector<std::string> folded;
};

const Table& table()
{
    static const Table made;
    return made;
}

} // namespace

CharacterKind kindOf(char32_t character)
{
    return character < TableEnd ? table().kinds[character] : findKind(character);
}

void appendFolded(std::string& folded, char32_t character)
{
    if (character < TableEnd) {
        folded += table().folded[character];
    } else if (findKind(character) == CharacterKind::Dense) {
        folded += QString::fromUcs4(&character, 1).toStdString();
    } else {
        folded += fold(character);
    }
}
