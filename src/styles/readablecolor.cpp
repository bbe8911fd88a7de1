// SPDX-License-Identifier: MIT
#include "styles/readablecolor.h"

#include "styles/csscolor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double LightnessStep = 0.05;
constexpr double Middle = 0.179; // beyond this luminance black has more contrast than white

std::array<double, 3> partsOf(Rgb color)
{
    return {double(color >> 16U & 0xFFU) / 255, double(color >> 8U & 0xFFU) / 255,
            double(color & 0xFFU) / 255};
}

/// By the byte of a colour's part.
const std::array<double, 256>& linearParts()
{
    static const auto parts = [] {
        std::array<double, 256> values{};
        for (size_t i = 0; i < values.size(); ++i) {
            const double part = double(i) / 255;
            values[i] = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        }
        return values;
    }();
    return parts;
}

double luminance(Rgb color)
{
    const auto& parts = linearParts();
    return 0.2126 * parts[color >> 16U & 0xFFU] + 0.7152 * parts[color >> 8U & 0xFFU] +
           0.0722 * parts[color & 0xFFU];
}

struct Hsl {
    double hue = 0;
    double saturation = 0;
    double lightness = 0;
};

Hsl toHsl(Rgb color)
{
    const auto parts = partsOf(color);
    const auto [red, green, blue] = parts;
    const auto [least, most] = std::minmax({red, green, blue});
    const double range = most - least;
    const double lightness = (most + least) / 2;
    if (range <= 0) {
        return {0, 0, lightness};
    }
    const double saturation = range / (1 - std::abs(2 * lightness - 1));
    const double hue = most == red     ? (green - blue) / range
                       : most == green ? (blue - red) / range + 2
                                       : (red - green) / range + 4;
    return {hue / 6, std::clamp(saturation, 0.0, 1.0), lightness};
}

} // namespace

double contrast(Rgb a, Rgb b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

Rgb readableOn(Rgb color, Rgb ground)
{
    if (contrast(color, ground) >= LeastContrast) {
        return color;
    }
    const double end = luminance(ground) < Middle ? 1 : 0;
    const auto hsl = toHsl(color);
    Rgb result = color;
    for (double step = LightnessStep; contrast(result, ground) < LeastContrast && step <= 1 + LightnessStep;
         step += LightnessStep) {
        const double share = std::min(step, 1.0);
        result = fromHsl(hsl.hue, hsl.saturation, hsl.lightness + (end - hsl.lightness) * share);
    }
    return result;
}

Rgb groundOn(Rgb ground, Rgb ofPage, Rgb base)
{
    constexpr double strong = 3;
    constexpr double paleSaturation = 0.6;
    if (contrast(ground, ofPage) >= strong && contrast(ground, base) >= 1.5) {
        return ground;
    }
    const auto hsl = toHsl(ground);
    const bool isBaseDark = luminance(base) < Middle;
    const bool isPageDark = luminance(ofPage) < Middle;
    const double distance = hsl.lightness - toHsl(ofPage).lightness;
    const double baseLightness = toHsl(base).lightness;
    if (isBaseDark == isPageDark && std::abs(baseLightness - toHsl(ofPage).lightness) < LightnessStep) {
        return ground;
    }
    const double lightness = baseLightness + (isBaseDark == isPageDark ? distance : -distance);
    const double saturation = std::min(hsl.saturation, isBaseDark ? paleSaturation : 1.0);
    return fromHsl(hsl.hue, saturation, std::clamp(lightness, 0.0, 1.0));
}

int chroma(Rgb color)
{
    const std::array<int, 3> parts{int(color >> 16U & 0xFFU), int(color >> 8U & 0xFFU), int(color & 0xFFU)};
    const auto [least, most] = std::minmax_element(parts.begin(), parts.end());
    return *most - *least;
}
