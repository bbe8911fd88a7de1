// SPDX-License-Identifier: MIT
#include "icons/icons.h"

#include <QPixmap>

namespace {

#include "icons/xpm/bookClose16x16.xpm"
#include "icons/xpm/bookClose32x32.xpm"
#include "icons/xpm/bookItem16x16.xpm"
#include "icons/xpm/bookItem32x32.xpm"
#include "icons/xpm/bookOpen16x16.xpm"
#include "icons/xpm/bookOpen32x32.xpm"
#include "icons/xpm/goBack16x16.xpm"
#include "icons/xpm/goBack32x32.xpm"
#include "icons/xpm/goBack_d16x16.xpm"
#include "icons/xpm/goBack_d32x32.xpm"
#include "icons/xpm/goForward16x16.xpm"
#include "icons/xpm/goForward32x32.xpm"
#include "icons/xpm/goForward_d16x16.xpm"
#include "icons/xpm/goForward_d32x32.xpm"
#include "icons/xpm/goHome16x16.xpm"
#include "icons/xpm/goHome32x32.xpm"
#include "icons/xpm/goHome_d16x16.xpm"
#include "icons/xpm/goHome_d32x32.xpm"
#include "icons/xpm/goSync16x16.xpm"
#include "icons/xpm/goSync32x32.xpm"
#include "icons/xpm/goSync_d16x16.xpm"
#include "icons/xpm/goSync_d32x32.xpm"
#include "icons/xpm/goUp16x16.xpm"
#include "icons/xpm/goUp32x32.xpm"
#include "icons/xpm/goUp_d16x16.xpm"
#include "icons/xpm/goUp_d32x32.xpm"
#include "icons/xpm/quenda32x32.xpm"
#include "icons/xpm/quenda64x64.xpm"

/// An image at its nominal size and at twice that size.
struct Image {
    const char* const* plain;
    const char* const* twice;
};

void addImage(QIcon& icon, const Image& image, QIcon::Mode mode)
{
    icon.addPixmap(QPixmap(image.plain), mode, QIcon::Off);
    QPixmap twice(image.twice);
    twice.setDevicePixelRatio(2);
    icon.addPixmap(twice, mode, QIcon::Off);
}

QIcon iconOf(const Image& normal)
{
    QIcon icon;
    addImage(icon, normal, QIcon::Normal);
    return icon;
}

QIcon iconOf(const Image& normal, const Image& disabled)
{
    QIcon icon = iconOf(normal);
    addImage(icon, disabled, QIcon::Disabled);
    return icon;
}

} // namespace

QIcon goIcon(GoIcon which)
{
    switch (which) {
    case GoIcon::Back:
        return iconOf({goBack16x16_xpm, goBack32x32_xpm}, {goBack_d16x16_xpm, goBack_d32x32_xpm});
    case GoIcon::Forward:
        return iconOf({goForward16x16_xpm, goForward32x32_xpm}, {goForward_d16x16_xpm, goForward_d32x32_xpm});
    case GoIcon::Up:
        return iconOf({goUp16x16_xpm, goUp32x32_xpm}, {goUp_d16x16_xpm, goUp_d32x32_xpm});
    case GoIcon::Home:
        return iconOf({goHome16x16_xpm, goHome32x32_xpm}, {goHome_d16x16_xpm, goHome_d32x32_xpm});
    case GoIcon::Sync:
        return iconOf({goSync16x16_xpm, goSync32x32_xpm}, {goSync_d16x16_xpm, goSync_d32x32_xpm});
    }
    return {};
}

QIcon bookIcon(BookIcon which)
{
    switch (which) {
    case BookIcon::Close:
        return iconOf({bookClose16x16_xpm, bookClose32x32_xpm});
    case BookIcon::Open:
        return iconOf({bookOpen16x16_xpm, bookOpen32x32_xpm});
    case BookIcon::Item:
        return iconOf({bookItem16x16_xpm, bookItem32x32_xpm});
    }
    return {};
}

QIcon applicationIcon()
{
    return iconOf({Quenda_image_data, Quenda64_image_data});
}
