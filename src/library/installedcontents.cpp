// SPDX-License-Identifier: MIT
#include "library/installedcontents.h"

#include "formats/paths.h"
#include "formats/regularfile.h"
#include "library/settingsstore.h"
#include "sources/sources.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace InstalledContents {

namespace {

constexpr auto Key = "contentsInstalled";

QStringList storedList(const SettingsStore& store)
{
    QStringList list = store.value(Key).toStringList();
    // An empty list is stored as the empty text, which reads back as one empty entry.
    list.removeAll(QString());
    return list;
}

bool storeList(SettingsStore& store, const QStringList& list)
{
    store.setValue(Key, list.isEmpty() ? QVariant(QString()) : QVariant(list));
    return store.sync();
}

/// A folder has one name, however it is written.
QString storedName(const QString& fileName)
{
    const QString path = absoluteFilePath(fileName);
    return path.endsWith(u'/') && path.size() > 1 ? path.chopped(1) : path;
}

Answer query(const SettingsStore& store, const QString& fileName)
{
    return storedList(store).contains(storedName(fileName)) ? Answer::Yes : Answer::No;
}

} // namespace

Answer isinstallContents(const QString& fileName)
{
    return mayBeHelpSet(fileName) ? query(SettingsStore(SettingsStore::Access::Read), fileName)
                                  : Answer::NotFound;
}

Outcome installContents(const QString& fileName)
{
    if (!mayBeHelpSet(fileName)) {
        return {Answer::NotFound};
    }
    SettingsStore store(SettingsStore::Access::Write);
    const Answer present = query(store, fileName);
    if (present != Answer::No) {
        return {present == Answer::Yes ? Answer::No : Answer::NotFound};
    }
    return {Answer::Yes, storeList(store, sortingCntList(storedList(store)) << storedName(fileName))};
}

bool installAll(const QStringList& fileNames)
{
    SettingsStore store(SettingsStore::Access::Write);
    QStringList list = sortingCntList(storedList(store));
    const qsizetype before = list.size();
    for (const auto& fileName : fileNames) {
        if (const QString name = storedName(fileName); mayBeHelpSet(name) && !list.contains(name)) {
            list.append(name);
        }
    }
    return list.size() == before || storeList(store, list);
}

Outcome uninstallContents(const QString& fileName)
{
    if (!mayBeHelpSet(fileName)) {
        return {Answer::NotFound};
    }
    SettingsStore store(SettingsStore::Access::Write);
    const Answer present = query(store, fileName);
    if (present != Answer::Yes) {
        return {present};
    }
    QStringList list = sortingCntList(storedList(store));
    list.removeOne(storedName(fileName));
    return {Answer::Yes, storeList(store, list)};
}

void forget(const QString& fileName)
{
    SettingsStore store(SettingsStore::Access::Write);
    QStringList list = storedList(store);
    if (list.removeAll(fileName) > 0) {
        storeList(store, list);
    }
}

QStringList loadInstalledFromSettings()
{
    return sortingCntList(storedList(SettingsStore(SettingsStore::Access::Read)));
}

bool saveInstalledToSettings(const QStringList& list)
{
    SettingsStore store(SettingsStore::Access::Write);
    return storeList(store, list);
}

QStringList dropVanishedContents()
{
    const auto isGone = [](const QString& name) {
        const auto error = sourceError(name);
        return error && ::isGone(*error);
    };
    QStringList list = loadInstalledFromSettings();
    if (std::none_of(list.begin(), list.end(), isGone)) {
        return list;
    }
    SettingsStore store(SettingsStore::Access::Write);
    list = sortingCntList(storedList(store));
    list.removeIf(isGone);
    storeList(store, list);
    return list;
}

QStringList sortingCntList(const QStringList& list)
{
    std::vector<std::pair<QString, QString>> titled;
    titled.reserve(size_t(list.size()));
    for (const auto& name : list) {
        titled.emplace_back(sourceTitle(name), name);
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
