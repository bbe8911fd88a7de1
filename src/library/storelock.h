// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Holds the advisory lock under which processes read, change and write the settings store. The kernel drops
/// it with the process; where no lock file can be made, work goes on without one.
class StoreLock {
public:
    StoreLock();
    ~StoreLock();
    Q_DISABLE_COPY_MOVE(StoreLock)

private:
    int m_fd = -1;
};
