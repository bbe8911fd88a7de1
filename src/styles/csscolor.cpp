// SPDX-License-Identifier: MIT
#include "styles/csscolor.h"

#include "styles/cssreader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <vector>

namespace {

Rgb mixed(Rgb color, double opacity)
{
    Rgb result = 0;
    for (unsigned shift = 0; shift <= 16; shift += 8) {
        const double part = double((color >> shift) & 0xFFU) * opacity + 255 * (1 - opacity);
        result |= Rgb(std::lround(part)) << shift;
    }
    return result;
}

std::optional<Rgb> readHex(std::string_view digits)
{
    unsigned long value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc() || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    if (digits.size() == 3 || digits.size() == 4) {
        unsigned long wide = 0;
        for (size_t i = 0; i < digits.size(); ++i) {
            const auto digit = (value >> (4 * (digits.size() - 1 - i))) & 0xFU;
            wide = wide << 8U | digit * 0x11U;
        }
        value = wide;
    } else if (digits.size() != 6 && digits.size() != 8) {
        return std::nullopt;
    }
    const bool hasAlpha = digits.size() == 4 || digits.size() == 8;
    const auto alpha = hasAlpha ? value & 0xFFU : 0xFFU;
    const auto color = Rgb(hasAlpha ? value >> 8U : value);
    return alpha == 0 ? std::nullopt : std::optional(mixed(color, double(alpha) / 255));
}

double hueToPart(double low, double high, double hue)
{
    hue -= std::floor(hue);
    if (hue < 1.0 / 6) {
        return low + (high - low) * 6 * hue;
    }
    if (hue < 0.5) {
        return high;
    }
    return hue < 2.0 / 3 ? low + (high - low) * 6 * (2.0 / 3 - hue) : low;
}

Rgb fromParts(double red, double green, double blue)
{
    const auto byte = [](double part) { return Rgb(std::lround(std::clamp(part, 0.0, 1.0) * 255)); };
    return byte(red) << 16U | byte(green) << 8U | byte(blue);
}

/// rgb(…), rgba(…), hsl(…) and hsla(…), with commas or blanks.
std::optional<Rgb> readColorFunction(std::string_view name, std::string_view arguments)
{
    std::string text(arguments);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == ',' || c == '/'; }, ' ');
    std::vector<double> numbers;
    for (const auto part : splitCss(text, ' ')) {
        std::string_view unit;
        if (const auto number = readCssNumber(part, unit)) {
            const bool isPercent = unit == "%";
            const bool isByte = name.substr(0, 3) == "rgb" && numbers.size() < 3 && !isPercent;
            const bool isHue = name.substr(0, 3) == "hsl" && numbers.empty();
            numbers.push_back(isHue       ? *number / 360
                              : isPercent ? *number / 100
                              : isByte    ? *number / 255
                                          : *number);
        }
    }
    const double opacity = numbers.size() > 3 ? std::clamp(numbers[3], 0.0, 1.0) : 1;
    if (numbers.size() < 3 || opacity <= 0) {
        return std::nullopt;
    }
    const bool isHsl = name.substr(0, 3) == "hsl";
    return mixed(isHsl
                     ? fromHsl(numbers[0], std::clamp(numbers[1], 0.0, 1.0), std::clamp(numbers[2], 0.0, 1.0))
                     : fromParts(numbers[0], numbers[1], numbers[2]),
                 opacity);
}

/// The names that are used; the others are rare.
std::optional<Rgb> namedColor(std::string_view name)
{
    static constexpr std::string_view table =
        ";black 000000;white FFFFFF;red FF0000;green 008000;blue 0000FF;gray 808080;grey 808080;"
        "silver C0C0C0;maroon 800000;purple 800080;fuchsia FF00FF;magenta FF00FF;lime 00FF00;"
        "olive 808000;yellow FFFF00;navy 000080;teal 008080;aqua 00FFFF;cyan 00FFFF;orange FFA500;"
        "brown A52A2A;crimson DC143C;darkblue 00008B;darkgreen 006400;darkred 8B0000;"
        "darkgray A9A9A9;darkgrey A9A9A9;dimgray 696969;dimgrey 696969;lightgray D3D3D3;"
        "lightgrey D3D3D3;darkorange FF8C00;firebrick B22222;forestgreen 228B22;royalblue 4169E1;"
        "steelblue 4682B4;slategray 708090;darkcyan 008B8B;darkmagenta 8B008B;indigo 4B0082;"
        "goldenrod DAA520;chocolate D2691E;tomato FF6347;seagreen 2E8B57;violet EE82EE;pink FFC0CB;"
        "gold FFD700;tan D2B48C;beige F5F5DC;ivory FFFFF0;khaki F0E68C;lavender E6E6FA;"
        "whitesmoke F5F5F5;lightyellow FFFFE0;lightblue ADD8E6;lightgreen 90EE90;sienna A0522D;"
        "mediumblue 0000CD;midnightblue 191970;darkslategray 2F4F4F;";
    const std::string key = ';' + std::string(name) + ' ';
    const size_t found = table.find(key);
    return found == std::string_view::npos ? std::nullopt : readHex(table.substr(found + key.size(), 6));
}

} // namespace

Rgb fromHsl(double hue, double saturation, double lightness)
{
    const double high =
        lightness < 0.5 ? lightness * (1 + saturation) : lightness + saturation - lightness * saturation;
    const double low = 2 * lightness - high;
    return fromParts(hueToPart(low, high, hue + 1.0 / 3), hueToPart(low, high, hue),
                     hueToPart(low, high, hue - 1.0 / 3));
}

std::optional<Rgb> readColor(std::string_view value)
{
    if (value.empty()) {
        return std::nullopt;
    }
    if (value.front() == '#') {
        return readHex(value.substr(1));
    }
    if (const size_t bracket = value.find('('); bracket != std::string_view::npos && value.back() == ')') {
        const auto name = value.substr(0, bracket);
        const bool isKnown = name == "rgb" || name == "rgba" || name == "hsl" || name == "hsla";
        return isKnown ? readColorFunction(name, value.substr(bracket + 1, value.size() - bracket - 2))
                       : std::nullopt;
    }
    return namedColor(value);
}
