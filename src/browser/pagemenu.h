// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class PageView;
class QPoint;

/// The context menu of a page.
namespace PageMenu {

/// What it has for the place that was clicked; empty for none.
struct Offers {
    QString linkTarget;
    std::function<void()> openLink;
    std::function<void()> showPicture;
};

/// Opens it at a point of the screen. It closes when another page is shown.
void open(PageView& view, const Offers& offers, const QPoint& point);

} // namespace PageMenu
