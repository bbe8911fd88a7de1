// SPDX-License-Identifier: MIT
#include "app/viewer.h"

#include "app/arguments.h"
#include "library/helplibrary.h"
#include "mainwindow/helpmainwindow.h"

#include <QApplication>
#include <QFileInfo>

#include <thread>

#include <fontconfig/fontconfig.h>
#include <malloc.h>

namespace {

bool isShowRequest(int argc, char* argv[])
{
    return argc == 3 && isOption(argv[1], "show");
}

/// Large files are read while the toolkit starts; for others a thread is not worth its start.
void readAhead(HelpLibrary& library, const QString& fileName)
{
    constexpr qint64 largeFile = 1 << 17; // bytes
    if (const QFileInfo info(fileName); info.isFile() && info.size() >= largeFile) {
        library.readAhead(fileName);
    }
}

} // namespace

int runViewer(int argc, char* argv[])
{
    // Large blocks go back to the system when they are freed, however many there were.
    constexpr int largeBlock = 1 << 18; // bytes
    mallopt(M_MMAP_THRESHOLD, largeBlock);
    // Takes about as long as the toolkit's connection to the display, which needs no fonts yet.
    std::thread fonts(FcInit);
    // Decided before the toolkit takes its own options out of the list.
    const bool isDefault = argc == 1 || isShowRequest(argc, argv);
    HelpLibrary library;
    for (int i = 1; i < argc && !isDefault; ++i) {
        readAhead(library, absoluteFileNameArgument(argv[i]));
    }
    const QApplication application(argc, argv);
    fonts.join();
    QGuiApplication::setDesktopFileName(QStringLiteral("quenda"));
    HelpMainWindow window(library);
    if (isDefault) {
        window.loadDefault();
    } else {
        for (int i = 1; i < argc; ++i) {
            window.insertContents(absoluteFileNameArgument(argv[i]));
            window.gotoFirstPage();
        }
    }
    if (isShowRequest(argc, argv)) {
        window.showInstalled(absoluteFileNameArgument(argv[2]));
    }
    window.show();
    return QApplication::exec();
}
