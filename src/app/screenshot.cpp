// SPDX-License-Identifier: MIT
#include "app/screenshot.h"

#include "app/arguments.h"
#include "library/helplibrary.h"
#include "library/helpset.h"
#include "mainwindow/helpmainwindow.h"

#include <QApplication>
#include <QPixmap>
#include <QTimer>

#include <cstdio>

namespace {

constexpr QSize PictureSize(900, 620);
constexpr int SettleTime = 300; // ms, for the layout that goes on in the event loop

void printSummary(const HelpLibrary& library)
{
    size_t topics = 0;
    for (const auto* root : library.roots()) {
        topics += library.helpSet(*root).records().size();
    }
    const QString text =
        QCoreApplication::translate("Screenshot", "%1 help set(s), %2 topics, %3 keywords\n");
    std::fputs(qUtf8Printable(
                   text.arg(library.roots().size()).arg(topics).arg(library.keywordIndex().rows().size())),
               stdout);
}

} // namespace

std::optional<int> takeScreenshot(int argc, char* argv[])
{
    if (argc < 3) {
        return std::nullopt;
    }
    useOffscreenPlatform();
    const QString picture = fileNameArgument(argv[2]);
    const QApplication application(argc, argv);
    HelpLibrary library;
    HelpMainWindow window(library);
    window.setPersistent(false);
    if (argc == 3) {
        window.loadDefault();
    }
    for (int i = 3; i < argc; ++i) {
        window.insertContents(absoluteFileNameArgument(argv[i]));
        window.gotoFirstPage();
    }
    window.resize(PictureSize);
    window.show();
    while (library.isBusy()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QTimer::singleShot(SettleTime, &application, &QApplication::quit);
    QApplication::exec();
    if (!window.grab().save(picture, "PNG")) {
        complain(QCoreApplication::translate("Screenshot", "\"%1\" cannot be written").arg(picture));
        return 1;
    }
    printSummary(library);
    return 0;
}
