// SPDX-License-Identifier: MIT
#include "markup/entities.h"

#include <QString>

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <unordered_map>

namespace {

constexpr std::string_view Table =
#include "markup/entitynames.inc"
    ;

std::string characters(std::string_view hexNumbers)
{
    constexpr int hex = 16;
    std::u32string text;
    const char* const end = hexNumbers.data() + hexNumbers.size();
    for (const char* begin = hexNumbers.data(); begin < end; ++begin) {
        unsigned number = 0;
        begin = std::from_chars(begin, end, number, hex).ptr;
        text += char32_t(number);
    }
    return QString::fromUcs4(text.data(), qsizetype(text.size())).toStdString();
}

std::unordered_map<std::string_view, std::string> makeEntities()
{
    std::unordered_map<std::string_view, std::string> entities;
    for (size_t begin = 0; begin < Table.size();) {
        const size_t blank = Table.find(' ', begin);
        const size_t end = Table.find(';', blank);
        entities.emplace(Table.substr(begin, blank - begin),
                         characters(Table.substr(blank + 1, end - blank - 1)));
        begin = end + 1;
    }
    return entities;
}

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

} // namespace

QByteArray withoutNewEntities(const QByteArray& html)
{
    static const auto entities = makeEntities();
    const std::string_view text(html.constData(), size_t(html.size()));
    QByteArray result;
    size_t copied = 0;
    for (size_t at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
        const auto* const nameEnd = std::find_if_not(text.begin() + at + 1, text.end(), isNameCharacter);
        const auto name = text.substr(at + 1, size_t(nameEnd - text.begin()) - at - 1);
        const auto found = nameEnd != text.end() && *nameEnd == ';' ? entities.find(name) : entities.end();
        if (found != entities.end()) {
            result.append(text.data() + copied, qsizetype(at - copied)).append(QByteArrayView(found->second));
            copied = at + name.size() + 2;
        }
    }
    return copied == 0 ? html : result.append(text.data() + copied, qsizetype(text.size() - copied));
}
