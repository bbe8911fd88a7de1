// SPDX-License-Identifier: MIT
#include "library/settingsstore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace {

constexpr int Attempts = 10;
constexpr std::chrono::seconds Patience(5);
constexpr std::chrono::milliseconds PollInterval(5);
constexpr int NoLock = -1;
constexpr int HeldByOthers = -2;

QString keyOf(const char* name)
{
    return QStringLiteral("/HelpMainWindow/") + QLatin1StringView(name);
}

QString lockDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' +
           QCoreApplication::organizationName();
}

int openLockFile()
{
    const QString dir = lockDirectory();
    // Not "<store>.lock": that name is the settings class's own.
    const QByteArray name =
        QFile::encodeName(dir + u'/' + QCoreApplication::applicationName() + QStringLiteral(".conf.rmw"));
    constexpr int flags = O_CLOEXEC | O_NONBLOCK;
    for (int i = 0; i < Attempts; ++i) {
        // Making a path can fail while another process makes the same one.
        QDir().mkpath(dir);
        const int fd = ::open(name.constData(), O_RDWR | O_CREAT | flags, S_IRUSR | S_IWUSR);
        if (fd >= 0) {
            return fd;
        }
        if (errno != ENOENT) {
            break;
        }
    }
    return ::open(name.constData(), O_RDONLY | flags);
}

/// The lock file, locked; NoLock when there can be none, HeldByOthers when somebody does not let go of it.
int lock()
{
    const int fd = openLockFile();
    const auto deadline = std::chrono::steady_clock::now() + Patience;
    while (fd >= 0 && ::flock(fd, LOCK_EX | LOCK_NB) < 0 && (errno == EWOULDBLOCK || errno == EINTR)) {
        if (std::chrono::steady_clock::now() > deadline) {
            ::close(fd);
            return HeldByOthers;
        }
        std::this_thread::sleep_for(PollInterval);
    }
    return fd;
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

SettingsStore::SettingsStore(Access access) : m_lock(access == Access::Write ? lock() : NoLock)
{
}

SettingsStore::~SettingsStore()
{
    sync();
    if (m_lock >= 0) {
        ::close(m_lock);
    }
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
    if (m_lock == HeldByOthers) {
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
