// SPDX-License-Identifier: MIT
#include "library/installedcontents.h"

#include "formats/helpsettitle.h"
#include "formats/paths.h"
#include "formats/regularfile.h"
#include "library/storelock.h"

#include <QSettings>

#include <algorithm>
#include <utility>
#include <vector>

namespace InstalledContents {

namespace {

const QString Key = QStringLiteral("/HelpMainWindow/contentsInstalled");

QStringList storedList()
{
    return QSettings().value(Key).toStringList();
}

} // namespace

Answer isinstallContents(const QString& fileName)
{
    if (!isRegularFile(fileName)) {
        return Answer::NotFound;
    }
    return storedList().contains(absoluteFilePath(fileName)) ? Answer::Yes : Answer::No;
}

Outcome installContents(const QString& fileName)
{
    const StoreLock lock;
    const Answer present = isinstallContents(fileName);
    if (present != Answer::No) {
        return {present == Answer::Yes ? Answer::No : Answer::NotFound};
    }
    return {Answer::Yes, saveInstalledToSettings(loadInstalledFromSettings() << absoluteFilePath(fileName))};
}

Outcome uninstallContents(const QString& fileName)
{
    const StoreLock lock;
    const Answer present = isinstallContents(fileName);
    if (present != Answer::Yes) {
        return {present};
    }
    QStringList list = loadInstalledFromSettings();
    list.removeOne(absoluteFilePath(fileName));
    return {Answer::Yes, saveInstalledToSettings(list)};
}

QStringList loadInstalledFromSettings()
{
    return sortingCntList(storedList());
}

bool saveInstalledToSettings(const QStringList& list)
{
    QSettings settings;
    // A writable file in a directory that is not: written in place.
    settings.setAtomicSyncRequired(false);
    settings.setValue(Key, list.isEmpty() ? QVariant(QString()) : QVariant(list));
    settings.sync();
    return settings.status() == QSettings::NoError;
}

QStringList dropVanishedContents()
{
    const StoreLock lock;
    QStringList list = loadInstalledFromSettings();
    // An empty list is stored as the empty text, which reads back as one empty entry.
    list.removeAll(QString());
    QStringList present = list;
    present.removeIf([](const QString& name) { return !isRegularFile(name); });
    if (present.size() != list.size()) {
        saveInstalledToSettings(present);
    }
    return present;
}

QStringList sortingCntList(const QStringList& list)
{
    std::vector<std::pair<QString, QString>> titled;
    titled.reserve(size_t(list.size()));
    for (const auto& name : list) {
        titled.emplace_back(getTitle(name), name);
    }
    std::stable_sort(titled.begin(), titled.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    QStringList sorted;
    for (const auto& [title, name] : titled) {
        sorted.append(name);
    }
    return sorted;
}

} // namespace InstalledContents
