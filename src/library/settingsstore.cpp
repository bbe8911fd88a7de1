// SPDX-License-Identifier: MIT
#include "library/settingsstore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int Attempts = 10;

QString keyOf(const char* name)
{
    return QStringLiteral("/HelpMainWindow/") + QLatin1StringView(name);
}

QString lockDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' +
           QCoreApplication::organizationName();
}

int openLockFile(SettingsStore::Access access)
{
    const QString dir = lockDirectory();
    // Not "<store>.lock": that name is the settings class's own.
    const QByteArray name =
        QFile::encodeName(dir + u'/' + QCoreApplication::applicationName() + QStringLiteral(".conf.rmw"));
    constexpr int flags = O_CLOEXEC | O_NONBLOCK;
    for (int i = 0; access == SettingsStore::Access::Write && i < Attempts; ++i) {
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

int lock(SettingsStore::Access access)
{
    const int fd = openLockFile(access);
    while (fd >= 0 && ::flock(fd, access == SettingsStore::Access::Write ? LOCK_EX : LOCK_SH) < 0 &&
           errno == EINTR) {
    }
    return fd;
}

} // namespace

SettingsStore::SettingsStore(Access access) : m_lock(lock(access))
{
    // A writable file in a directory that is not is written in place.
    m_settings.setAtomicSyncRequired(false);
}

SettingsStore::~SettingsStore()
{
    m_settings.sync();
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
    m_settings.setValue(keyOf(name), value);
}

bool SettingsStore::sync()
{
    m_settings.sync();
    return m_settings.status() == QSettings::NoError;
}
