// SPDX-License-Identifier: MIT
#include "app/viewer.h"

#include "app/arguments.h"
#include "app/memory.h"
#include "library/helplibrary.h"
#include "mainwindow/helpmainwindow.h"
#include "mainwindow/wish.h"

#include <QApplication>
#include <QBuffer>
#include <QFileInfo>
#include <QFontMetrics>
#include <QImageReader>
#include <QTimer>

#include <chrono>
#include <thread>

#include <fontconfig/fontconfig.h>

namespace {

bool isShowRequest(int argc, char* argv[])
{
    return argc == 3 && isOption(argv[1], "show");
}

/// The contents files that are left once the toolkit has taken its own options out of the list.
QStringList remainingFileNames(int argc, char* argv[])
{
    QStringList names;
    for (int i = 1; i < argc; ++i) {
        names.append(absoluteFileNameArgument(argv[i]));
    }
    return names;
}

/// Large files are read while the toolkit starts; for others a thread is not worth its start.
void readAhead(HelpLibrary& library, const QStringList& fileNames)
{
    constexpr qint64 largeFile = 1 << 17; // bytes
    for (const auto& named : fileNames) {
        const QString fileName = HelpLibrary::placeOf(named).helpSet;
        if (const QFileInfo info(fileName); info.isFile() && info.size() >= largeFile) {
            library.readAhead(fileName);
        }
    }
}

/// Loads the toolkit's plugins for pictures, which it does when it reads the first one.
void loadPicturePlugins()
{
    QByteArray signature("\x89PNG");
    QBuffer buffer(&signature);
    buffer.open(QIODevice::ReadOnly);
    [[maybe_unused]] const auto format = QImageReader::imageFormat(&buffer);
}

/// Makes the toolkit's list of fonts, which it does when it is first asked for a size.
void loadFonts()
{
    [[maybe_unused]] const int height = QFontMetrics(QApplication::font()).height();
}

/// Lets keyword indexes wait until the window has been painted.
class IndexAfterPage : public QObject {
public:
    IndexAfterPage(HelpLibrary& library, QWidget& window) : m_library(library)
    {
        m_library.setIndexHeld(true);
        window.installEventFilter(this);
        // A window that nobody sees is not painted.
        QTimer::singleShot(Patience, this, [this] { release(); });
    }

    bool eventFilter(QObject* window, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            window->removeEventFilter(this);
            QTimer::singleShot(0, this, [this] { release(); });
        }
        return false;
    }

private:
    static constexpr auto Patience = std::chrono::milliseconds(500);

    void release() { m_library.setIndexHeld(false); }

    HelpLibrary& m_library;
};

} // namespace

std::optional<int> runViewer(int argc, char* argv[])
{
    returnFreedMemory();
    // Decided before the toolkit takes its own options out of the list.
    const bool isDefault = argc == 1 || isShowRequest(argc, argv);
    QStringList fileNames;
    for (int i = 1; i < argc && !isDefault; ++i) {
        fileNames.append(absoluteFileNameArgument(argv[i]));
    }
    HelpLibrary library;
    // Takes about as long as the toolkit's connection to the display, which needs no fonts yet. Three threads
    // on two processors would hold up each other.
    std::thread preparation([&] {
        FcInit();
        readAhead(library, fileNames);
    });
    const QApplication application(argc, argv);
    preparation.join();
    std::thread picturePlugins(loadPicturePlugins);
    loadFonts();
    picturePlugins.join();
    QGuiApplication::setDesktopFileName(QStringLiteral("quenda"));
    HelpMainWindow window(library);
    IndexAfterPage indexAfterPage(library, window);
    const Wish wish =
        isDefault ? Wish{.lastSession = true,
                         .show = isShowRequest(argc, argv) ? absoluteFileNameArgument(argv[2]) : QString()}
                  : Wish{.open = remainingFileNames(argc, argv)};
    for (const auto& problem : window.fulfil(wish)) {
        complain(problem);
    }
    window.show();
    return QApplication::exec();
}
