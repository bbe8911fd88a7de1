// SPDX-License-Identifier: MIT
#include "mainwindow/windowsettings.h"

#include "browser/colorscheme.h"
#include "browser/pageview.h"
#include "library/settingsstore.h"

#include <QDataStream>
#include <QDockWidget>
#include <QGuiApplication>
#include <QIODevice>
#include <QMainWindow>
#include <QScreen>

#include <algorithm>

namespace WindowSettings {

namespace {

constexpr QSize LeastFirstSize(590, 400); // of a window that has never been shown
constexpr QSize LargestFirstSize(1280, 900);
constexpr int LargestFontSize = 500;
constexpr int LongestLine = 300;       // characters
constexpr int PanesVersion = 1;        // of the panes and tool bars that there are
constexpr QSize LeastVisible(100, 50); // pixels of the window that must be on a screen

/// Two thirds of the screen in each direction, as far as that is useful.
QSize firstSize(const QWidget& window)
{
    const QSize available = window.screen()->availableGeometry().size();
    return (available * 2 / 3).expandedTo(LeastFirstSize).boundedTo(LargestFirstSize);
}

/// restoreGeometry() accepts blocks that are cut off and then makes a window without a size.
bool isWholeBlock(const QByteArray& block)
{
    constexpr quint32 magic = 0x1D9D0CB;
    constexpr qsizetype length1 = 46;
    constexpr qsizetype length2 = 50;
    constexpr qsizetype length3 = 66;
    QDataStream stream(block);
    quint32 foundMagic = 0;
    quint16 version = 0;
    stream >> foundMagic >> version;
    const qsizetype length = version >= 3 ? length3 : version == 2 ? length2 : length1;
    return foundMagic == magic && block.size() >= length;
}

bool isReachable(const QRect& frame)
{
    const auto screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
        const QRect seen = screen->availableGeometry() & frame;
        return seen.width() >= LeastVisible.width() && seen.height() >= LeastVisible.height();
    });
}

void makeReachable(QWidget& window)
{
    const QRect available = window.screen()->availableGeometry();
    const QSize least = window.minimumSizeHint().expandedTo(LeastVisible);
    if (!window.isMaximized() && !window.isFullScreen()) {
        const bool isTooSmall = window.width() < least.width() || window.height() < least.height();
        const QSize frame = window.frameSize() - window.size();
        window.resize((isTooSmall ? firstSize(window) : window.size()).boundedTo(available.size() - frame));
    }
    if (!isReachable(window.frameGeometry())) {
        window.move(available.center() - window.rect().center());
    }
}

/// Of the flag that says whether a person chose the value of a key.
QByteArray chosenKey(const char* key)
{
    return QByteArray(key) + "Chosen";
}

} // namespace

void loadDisplay(PageView& view)
{
    const SettingsStore store(SettingsStore::Access::Read);
    // What nobody chose is the desktop's of that time. Stores of other programs do not tell.
    const auto isChosen = [&store](const char* key) {
        return store.contains(key) && store.value(chosenKey(key).constData(), true).toBool();
    };
    if (const QString family = store.value("fontName").toString();
        !family.isEmpty() && isChosen("fontName")) {
        view.setFontFamily(family);
    }
    const int size = store.value("fontSize").toInt();
    if (size > 0 && size <= LargestFontSize && isChosen("fontSize")) {
        view.setFontSize(size);
    }
    if (const QString family = store.value("fontFixedName").toString();
        !family.isEmpty() && isChosen("fontFixedName")) {
        view.setFontFixedFamily(family);
    }
    const int lineWidth = store.value("lineWidth").toInt();
    view.setLineWidth(lineWidth > 0 && lineWidth <= LongestLine ? lineWidth : view.lineWidth());
    applyColorScheme(ColorScheme(std::clamp(store.value("colors").toInt(), 0, int(ColorScheme::Dark))));
    view.setReadingView(store.value("readingView", view.isReadingView()).toBool());
    if (isChosen("linkUnderline")) {
        view.setLinkUnderline(store.value("linkUnderline").toBool());
    }
    if (isChosen("linkColor")) {
        view.setLinkColor(QColor::fromRgb(QRgb(store.value("linkColor").toInt())));
    }
}

void saveDisplay(const PageView& view)
{
    SettingsStore store(SettingsStore::Access::Write);
    const auto save = [&store](const char* key, const QVariant& value, bool isChosen) {
        store.setValue(key, value);
        store.setValue(chosenKey(key).constData(), isChosen);
    };
    const auto& chosen = view.chosen();
    save("fontName", view.getFontFamily(), chosen.family);
    save("fontSize", view.getFontSize(), chosen.size);
    save("fontFixedName", view.getFontFixedFamily(), chosen.fixedFamily);
    save("linkUnderline", view.getLinkUnderline(), chosen.linkUnderline);
    save("linkColor", int(view.getLinkColor().rgba()), chosen.linkColor);
    store.setValue("readingView", view.isReadingView());
    store.setValue("lineWidth", view.lineWidth());
    store.setValue("colors", int(appliedColorScheme()));
}

void loadGeometry(QWidget& window)
{
    const SettingsStore store(SettingsStore::Access::Read);
    // A window that has not been moved is placed by the window manager.
    if (store.contains("geometry/x") || store.contains("geometry/y")) {
        const auto coordinate = [&store](const char* key, int current) {
            // Beyond, the toolkit's sums do not fit their type.
            return std::clamp(store.value(key, current).toInt(), -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        };
        window.move(coordinate("geometry/x", window.x()), coordinate("geometry/y", window.y()));
    }
    const QSize first = firstSize(window);
    window.resize(store.value("geometry/w", first.width()).toInt(),
                  store.value("geometry/h", first.height()).toInt());
    const QByteArray block = store.value("dockGeometry").toByteArray();
    if (isWholeBlock(block)) {
        window.restoreGeometry(block);
    }
    makeReachable(window);
}

void saveGeometry(const QWidget& window)
{
    SettingsStore store(SettingsStore::Access::Write);
    store.setValue("geometry/x", window.x());
    store.setValue("geometry/y", window.y());
    store.setValue("geometry/w", window.width());
    store.setValue("geometry/h", window.height());
    store.setValue("dockGeometry", window.saveGeometry());
}

bool loadPanes(QMainWindow& window, QDockWidget& dock, int firstWidth)
{
    const SettingsStore store(SettingsStore::Access::Read);
    // What is no state of this version is refused as a whole.
    window.restoreState(store.value("panes").toByteArray(), PanesVersion);
    // A window that has not been shown forgets the width in its state.
    const int width = store.value("panesWidth").toInt();
    const bool isUseful = width > 0 && width < window.width();
    window.resizeDocks({&dock}, {isUseful ? width : firstWidth}, Qt::Horizontal);
    return !isUseful || width == firstWidth;
}

void savePanes(const QMainWindow& window, const QDockWidget& dock)
{
    SettingsStore store(SettingsStore::Access::Write);
    store.setValue("panes", window.saveState(PanesVersion));
    if (!dock.isHidden() && !dock.isFloating()) {
        store.setValue("panesWidth", dock.width());
    }
}

ViewChoices loadViewChoices()
{
    const SettingsStore store(SettingsStore::Access::Read);
    return {store.value("groupByHelpSet", true).toBool(), store.value("followPage", true).toBool(),
            store.value("outlinePane").toBool(), store.value("outlinePart").toInt()};
}

void saveViewChoices(const ViewChoices& choices)
{
    SettingsStore store(SettingsStore::Access::Write);
    store.setValue("groupByHelpSet", choices.isGrouped);
    store.setValue("followPage", choices.follows);
    store.setValue("outlinePane", choices.hasOutline);
    store.setValue("outlinePart", choices.outlinePart);
}

QStringList loadContents()
{
    return SettingsStore(SettingsStore::Access::Read).value("contents").toStringList();
}

void saveContents(const QStringList& fileNames)
{
    // No file is one empty entry.
    SettingsStore(SettingsStore::Access::Write)
        .setValue("contents", fileNames.isEmpty() ? QStringList{QString()} : fileNames);
}

Session loadSession()
{
    const SettingsStore store(SettingsStore::Access::Read);
    return {store.value("session/page").toString(), store.value("session/scroll").toInt()};
}

void saveSession(const Session& session)
{
    SettingsStore store(SettingsStore::Access::Write);
    store.setValue("session/page", session.page);
    store.setValue("session/scroll", session.scroll);
}

} // namespace WindowSettings
