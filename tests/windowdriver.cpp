// SPDX-License-Identifier: MIT
// Usage: windowdriver FILE.cnt ...
// Opens help sets in the window, offscreen, and uses them like somebody who wants to see everything: for
// tst_hostile, which limits its time and memory and watches what it opens.
#include "windowuser.h"

#include <QPixmap>

namespace {

constexpr int Rows = 10;

void readAround(WindowUser& user)
{
    for (int row = 0; row < Rows; ++row) {
        user.clickRow(row, row % 2 == 0);
        QCoreApplication::processEvents();
    }
    user.lookUp(QStringLiteral("aB"));
    user.clickRow(0);
    user.followLink(0);
    QCoreApplication::processEvents();
    user.trigger("goBackAction");
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("Quenda"));
    QCoreApplication::setOrganizationName(QStringLiteral("Orvanel"));
    const QApplication application(argc, argv);
    WindowUser user;
    for (const auto& name : QApplication::arguments().sliced(1)) {
        user.open(HelpLibrary::absoluteName(name));
    }
    user.waitUntilLoaded();
    readAround(user);
    const bool isDrawn = !user.window().grab().isNull();
    return isDrawn && user.window().close() ? 0 : 1;
}
