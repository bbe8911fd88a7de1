// SPDX-License-Identifier: MIT
#include "library/settingsstore.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

namespace {

constexpr std::chrono::seconds Patience(5);

QString keyOf(const char* name)
{
    return QStringLiteral("/HelpMainWindow/") + QLatin1StringView(name);
}

QString lockDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' +
           QCoreApplication::organizationName();
}

/// Not "<store>.lock": that name is the settings class's own.
QString lockFile()
{
    return lockDirectory() + u'/' + QCoreApplication::applicationName() + QStringLiteral(".conf.rmw");
}

/// Whether a file with so many keys is on the disk as a whole; the settings class does not notice a full
/// disk.
bool isWhole(const QString& fileName, qsizetype keys)
{
    QFile file(fileName);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const auto lines = bytes.split('\n');
    return bytes.endsWith('\n') && keys == std::count_if(lines.begin(), lines.end(),
                                                         [](const auto& line) { return line.contains('='); });
}

/// Makes `copyName`, a copy of the store with these changes; false when it is not whole.
bool writeCopy(const QString& copyName, const QString& store, const QVariantMap& changes)
{
    if (QFile::exists(store) && !QFile::copy(store, copyName)) {
        return false;
    }
    QSettings copy(copyName, QSettings::NativeFormat);
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        copy.setValue(it.key(), it.value());
    }
    copy.sync();
    // Lines that are none of its own go, which is no reason to refuse the others.
    return copy.status() != QSettings::AccessError && isWhole(copyName, copy.allKeys().size());
}

} // namespace

SettingsStore::SettingsStore(Access access)
    : m_lock(access == Access::Write ? FileLock(lockFile(), Patience) : FileLock())
{
}

SettingsStore::~SettingsStore()
{
    sync();
}

bool SettingsStore::contains(const char* name) const
{
    return m_settings.contains(keyOf(name));
}

QVariant SettingsStore::value(const char* name, const QVariant& fallback) const
{
    return m_settings.value(keyOf(name), fallback);
}

void SettingsStore::setValue(const char* name, const QVariant& value)
{
    m_changes.insert(keyOf(name), value);
}

bool SettingsStore::sync()
{
    const QVariantMap changes = std::exchange(m_changes, {});
    if (changes.isEmpty()) {
        return true;
    }
    if (m_lock.state() == FileLock::State::Taken) {
        return false;
    }
    // A store that is a link stays one.
    const QFileInfo info(fileName());
    const QString store = info.exists() ? info.canonicalFilePath() : fileName();
    const QString copy = store + QStringLiteral(".new");
    QFile::remove(copy);
    QFile::remove(copy + QStringLiteral(".lock"));
    const bool isStored =
        writeCopy(copy, store, changes) &&
        std::rename(QFile::encodeName(copy).constData(), QFile::encodeName(store).constData()) == 0;
    QFile::remove(copy);
    m_settings.sync();
    return isStored;
}
