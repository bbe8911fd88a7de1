// SPDX-License-Identifier: MIT
#include "library/storelock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

StoreLock::StoreLock()
{
    const QString store = QSettings().fileName();
    QDir().mkpath(QFileInfo(store).path());
    // Not "<store>.lock": that name is the settings class's own.
    const QByteArray name = QFile::encodeName(store + QStringLiteral(".rmw"));
    m_fd = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR);
    if (m_fd < 0) {
        m_fd = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    }
    while (m_fd >= 0 && ::flock(m_fd, LOCK_EX) < 0 && errno == EINTR) {
    }
}

StoreLock::~StoreLock()
{
    if (m_fd >= 0) {
        ::close(m_fd);
    }
}
