// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

#include <linux/capability.h>
#include <sys/prctl.h>

/// What a process left; `code` is -1 when it crashed or did not end.
struct Answer {
    int code = -1;
    QByteArray out;
    QByteArray error;
};

/// Path of the program under test.
inline QString testProgram()
{
    return qEnvironmentVariable("QUENDA_PROGRAM");
}

/// Waits for the end of a process, up to `patience` milliseconds; then it is killed.
inline Answer finish(QProcess& process, int patience = 30'000)
{
    if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit) {
        process.kill();
        process.waitForFinished();
        return {-1, {}, "no end, or a violent one: " + process.readAllStandardError()};
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

/// For a process about to become a program: root passes over permissions by capabilities, which it gives up.
inline void obeyPermissions()
{
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
}
