// SPDX-License-Identifier: MIT
#include "browser/pagestyle.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double LeastContrast = 4.5;
constexpr float LightnessStep = 0.05F;

double linear(float component)
{
    const double c = component;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QString quoted(QString text)
{
    return u'"' + text.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\"")) + u'"';
}

} // namespace

double contrast(const QColor& a, const QColor& b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

QColor readableOn(const QColor& color, const QColor& ground)
{
    // Beyond this luminance black has more contrast than white.
    constexpr double middle = 0.179;
    const float end = luminance(ground) < middle ? 1.0F : 0.0F;
    QColor result = color.toRgb();
    for (float step = 0; contrast(result, ground) < LeastContrast && step < 1; step += LightnessStep) {
        const float lightness = color.lightnessF() + (end - color.lightnessF()) * (step + LightnessStep);
        result = QColor::fromHslF(std::max(0.0F, color.hslHueF()), color.hslSaturationF(),
                                  std::clamp(lightness, 0.0F, 1.0F))
                     .toRgb();
    }
    return result;
}

QColor PageStyle::shownLinkColor(const QPalette& palette) const
{
    const QColor link = palette.color(QPalette::Active, QPalette::Link);
    return hasOwnLinkColor ? link : readableOn(link, palette.color(QPalette::Active, QPalette::Base));
}

QString PageStyle::sheet(const QPalette& palette) const
{
    return QStringLiteral("a:link{color:%1;text-decoration:%2}pre,code,tt,kbd,samp{font-family:%3}")
        .arg(shownLinkColor(palette).name(),
             linkUnderline ? QStringLiteral("underline") : QStringLiteral("none"), quoted(fixedFamily));
}
