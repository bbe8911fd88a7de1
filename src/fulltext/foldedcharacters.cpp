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

constexpr char32_t SmallIo = 0x0451; // the Cyrillic letter that counts as its neighbour
constexpr char32_t LargeIo = 0x0401;

/// Thai, Lao, Burmese, Khmer, kana, Chinese characters, Korean syllables, kana of half width.
constexpr std::array<Range, 12> DenseRanges{{{0x0E00, 0x0EFF},
                                             {0x1000, 0x109F},
                                             {0x1100, 0x11FF},
                                             {0x1780, 0x17FF},
                                             {0x3005, 0x3007},
                                             {0x3040, 0x31FF},
                                             {0x3400, 0x4DBF},
                                             {0x4E00, 0x9FFF},
                                             {0xAC00, 0xD7AF},
                                             {0xF900, 0xFAFF},
                                             {0xFF66, 0xFF9F},
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

bool isCyrillic(char32_t character)
{
    return character >= 0x0400 && character <= 0x052F && character != SmallIo && character != LargeIo;
}

bool isKana(char32_t character)
{
    return character >= 0x3040 && character <= 0x30FF;
}

std::string fold(char32_t character)
{
    const auto form = isCyrillic(character) ? QString::NormalizationForm_KC : QString::NormalizationForm_KD;
    const QString whole = QString::fromUcs4(&character, 1).normalized(form);
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

bool isVoicedMark(char32_t character)
{
    return character == 0x3099 || character == 0x309A || character == 0xFF9E || character == 0xFF9F;
}

bool foldMark(std::string& folded, char32_t mark)
{
    if (!isVoicedMark(mark) && mark != 0x0306 && mark != 0x0308 && mark != 0x0301) {
        return false;
    }
    size_t begin = folded.size();
    while (begin > 0 && (static_cast<unsigned char>(folded[begin - 1]) & 0xC0U) == 0x80) {
        --begin;
    }
    if (begin == folded.size() || begin == 0) {
        return false;
    }
    const QString two = QString::fromUtf8(folded.data() + begin - 1, qsizetype(folded.size() - begin) + 1) +
                        QString::fromUcs4(&mark, 1);
    // Marks of half width are blanks of their own unless they are taken apart.
    const QString one =
        two.normalized(QString::NormalizationForm_KD).normalized(QString::NormalizationForm_KC);
    const auto codes = one.toUcs4();
    if (codes.size() != 1 || !(isCyrillic(codes.first()) || isKana(codes.first()))) {
        return false;
    }
    folded.resize(begin - 1);
    folded += one.toStdString();
    return true;
}

void appendFolded(std::string& folded, char32_t character)
{
    if (character < TableEnd) {
        folded += table().folded[character];
    } else if (findKind(character) == CharacterKind::Dense) {
        const bool isCompatible = character >= 0xF900 && character <= 0xFFFF;
        const QString whole = QString::fromUcs4(&character, 1);
        folded += (isCompatible ? whole.normalized(QString::NormalizationForm_KC) : whole).toStdString();
    } else {
        folded += fold(character);
    }
}
