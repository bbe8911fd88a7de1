// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTest>

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

/// What the process that ended last left, and how it was started.
inline std::pair<QStringList, Answer> lastAnswer; // NOLINT(*-avoid-non-const-global-variables)

/// Waits for the end of a process, up to `patience` milliseconds; then it is killed.
inline Answer finish(QProcess& process, int patience = 30'000)
{
    const bool isFinished = process.waitForFinished(patience);
    if (!isFinished) {
        process.kill();
        process.waitForFinished();
    }
    const bool isOrderly = isFinished && process.exitStatus() == QProcess::NormalExit;
    Answer answer{isOrderly ? process.exitCode() : -1, process.readAllStandardOutput(),
                  process.readAllStandardError()};
    lastAnswer = {QStringList{process.program()} + process.arguments(), answer};
    return answer;
}

/// For the end of every test that starts programs: why it failed may stand in what they wrote.
inline void tellAfterFailure()
{
    if (const auto& [command, answer] = lastAnswer; QTest::currentTestFailed() && !command.isEmpty()) {
        qInfo("%s\nexit code %d, standard error:\n%s", qUtf8Printable(command.join(u' ')), answer.code,
              answer.error.right(4000).constData()); // NOLINT(*-magic-numbers)
    }
}

/// For a process about to become a program: root passes over permissions by capabilities, which it gives up.
inline void obeyPermissions()
{
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
}
