// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "browser/pageview.h"
#include "library/installedcontents.h"
#include "mainwindow/windowsettings.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QSettings>

namespace {

/// A page view without links.
class View : public PageView {
public:
    using PageView::PageView;

private:
    [[nodiscard]] QString linkTarget(const QString& href) const override { return href; }
};

const Scratch& store()
{
    static const Scratch scratch;
    return scratch;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "*=false");
    qputenv("XDG_CONFIG_HOME", store().path({}).toLocal8Bit());
    qputenv("XDG_CONFIG_DIRS", store().path(QStringLiteral("none")).toLocal8Bit());
    QCoreApplication::setApplicationName(QStringLiteral("Quenda"));
    QCoreApplication::setOrganizationName(QStringLiteral("Orvanel"));
    QDir().mkpath(store().path(QStringLiteral("Orvanel")));
    static int count = 1;
    static QApplication application(count, *argv);
    static_cast<void>(argc);
    return 0;
}

/// What the list of fonts keeps for the whole run is not the viewer's.
extern "C" const char* __lsan_default_suppressions() // NOLINT: the run-time library's name
{
    return "leak:libfontconfig.so";
}

/// The file of the settings store, with anything in any key.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QFile file(store().write(QStringLiteral("Orvanel/Quenda.conf"), inputBytes(data, size)));
    // Settings are read again when the time of the file has changed.
    static qint64 time = 0;
    require(file.open(QIODevice::ReadWrite) &&
            file.setFileTime(QDateTime::fromSecsSinceEpoch(++time), QFileDevice::FileModificationTime));
    file.close();

    static QWidget window;
    View view(nullptr);
    WindowSettings::loadDisplay(view);
    require(view.getFontSize() > 0 && !view.getFontFamily().isEmpty());
    WindowSettings::loadGeometry(window);
    require(!window.size().isEmpty());
    static_cast<void>(WindowSettings::loadSession());
    require(!InstalledContents::loadInstalledFromSettings().contains(QString()));
    for (const auto& name : WindowSettings::loadContents()) {
        static_cast<void>(InstalledContents::isinstallContents(name));
    }
    static_cast<void>(InstalledContents::dropVanishedContents());
    return 0;
}
