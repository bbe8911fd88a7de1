// SPDX-License-Identifier: MIT
#include "browser/colorscheme.h"

#include <QApplication>
#include <QPalette>
#include <QVariant>

namespace {

constexpr auto Applied = "quendaColorScheme"; // property of the application

struct Colors {
    QRgb window;
    QRgb text;
    QRgb base;
    QRgb alternate;
    QRgb button;
    QRgb link;
    QRgb visited;
    QRgb highlight;
    QRgb disabled;
};

constexpr Colors Light{0xffefefef, 0xff000000, 0xffffffff, 0xfff5f5f5, 0xffefefef,
                       0xff0000ee, 0xff551a8b, 0xff308cc6, 0xff8e8e8e};
// The toolkit draws frames a good deal darker than the window; they must not get lost on the base.
constexpr Colors Dark{0xff3c3c40, 0xffe6e6e6, 0xff1e1e20, 0xff27272a, 0xff48484d,
                      0xff7ab8ff, 0xffc3a6ff, 0xff2f65ca, 0xff7d7d80};

QPalette made(const Colors& colors)
{
    QPalette palette(QColor::fromRgb(colors.button), QColor::fromRgb(colors.window));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, QColor::fromRgb(colors.text));
        if (role != QPalette::ToolTipText) {
            palette.setColor(QPalette::Disabled, role, QColor::fromRgb(colors.disabled));
        }
    }
    palette.setColor(QPalette::PlaceholderText, QColor::fromRgb(colors.disabled));
    palette.setColor(QPalette::Base, QColor::fromRgb(colors.base));
    palette.setColor(QPalette::AlternateBase, QColor::fromRgb(colors.alternate));
    palette.setColor(QPalette::ToolTipBase, QColor::fromRgb(colors.alternate));
    palette.setColor(QPalette::Link, QColor::fromRgb(colors.link));
    palette.setColor(QPalette::LinkVisited, QColor::fromRgb(colors.visited));
    palette.setColor(QPalette::Highlight, QColor::fromRgb(colors.highlight));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

QPalette paletteOf(ColorScheme scheme)
{
    switch (scheme) {
    case ColorScheme::Light:
        return made(Light);
    case ColorScheme::Dark:
        return made(Dark);
    case ColorScheme::Desktop:
        break;
    }
    return QApplication::palette();
}

void applyColorScheme(ColorScheme scheme)
{
    if (scheme == appliedColorScheme()) {
        return;
    }
    qApp->setProperty(Applied, int(scheme));
    // The default palette stands for the desktop's.
    QApplication::setPalette(scheme == ColorScheme::Desktop ? QPalette() : paletteOf(scheme));
}

ColorScheme appliedColorScheme()
{
    return ColorScheme(qApp->property(Applied).toInt());
}
