// SPDX-License-Identifier: MIT
#include "library/openedsets.h"

#include "library/settingsstore.h"

namespace OpenedSets {

namespace {

constexpr auto OpenedKey = "opened";
constexpr auto EarlierKey = "sessionBefore";

QStringList read(const SettingsStore& store, const char* key)
{
    QStringList list = store.value(key).toStringList();
    // An empty list reads back as one empty entry.
    list.removeAll(QString());
    return list;
}

void write(const char* key, const QStringList& list)
{
    SettingsStore(SettingsStore::Access::Write)
        .setValue(key, list.isEmpty() ? QVariant(QString()) : QVariant(list));
}

} // namespace

QStringList load()
{
    return read(SettingsStore(SettingsStore::Access::Read), OpenedKey);
}

void remember(const QStringList& fileNames)
{
    if (fileNames.isEmpty()) {
        return;
    }
    QStringList list = fileNames + load();
    list.removeDuplicates();
    write(OpenedKey, list.mid(0, Maximum));
}

void forget(const QString& fileName)
{
    QStringList list = load();
    if (list.removeAll(fileName) > 0) {
        write(OpenedKey, list);
    }
}

void clear()
{
    write(OpenedKey, {});
}

QStringList loadEarlierSession()
{
    return read(SettingsStore(SettingsStore::Access::Read), EarlierKey);
}

void saveEarlierSession(const QStringList& fileNames)
{
    write(EarlierKey, fileNames);
}

} // namespace OpenedSets
