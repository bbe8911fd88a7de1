// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Something wrong with a help set, found while reading it.
struct Problem {
    enum class Severity { Warning, Error };

    QString file; ///< absolute path of the file that holds the fault
    int line = 0; ///< counted from 1; 0 when the fault concerns the whole file
    Severity severity = Severity::Warning;
    QString message; ///< for people, translated
};
