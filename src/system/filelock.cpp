// SPDX-License-Identifier: MIT
#include "system/filelock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int Attempts = 10;
constexpr std::chrono::milliseconds PollInterval(5);

/// One that cannot be written can be locked, too.
int openLockFile(const QString& file)
{
    const QByteArray name = QFile::encodeName(file);
    constexpr int flags = O_CLOEXEC | O_NONBLOCK;
    for (int i = 0; i < Attempts; ++i) {
        const int fd = ::open(name.constData(), O_RDWR | O_CREAT | flags, S_IRUSR | S_IWUSR);
        if (fd >= 0) {
            return fd;
        }
        if (errno != ENOENT) {
            break;
        }
        // Making a path can fail while another process makes the same one.
        QDir().mkpath(QFileInfo(file).path());
    }
    return ::open(name.constData(), O_RDONLY | flags);
}

} // namespace

FileLock::FileLock(const QString& file, std::chrono::milliseconds patience, const std::stop_token& stop)
    : m_file(openLockFile(file))
{
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    while (m_file >= 0 && ::flock(m_file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            return;
        }
        if (stop.stop_requested() || Clock::now() - begin >= patience) {
            m_state = State::Taken;
            return;
        }
        std::this_thread::sleep_for(PollInterval);
    }
    m_state = m_file >= 0 ? State::Held : State::Impossible;
}

FileLock::~FileLock()
{
    if (m_file >= 0) {
        ::close(m_file);
    }
}
