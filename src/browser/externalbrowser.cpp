// SPDX-License-Identifier: MIT
#include "browser/externalbrowser.h"

#include <QProcess>

#include <algorithm>
#include <array>

bool openInExternalBrowser(const QString& name)
{
    if (name.startsWith(u'-')) {
        return false;
    }
    static constexpr std::array programs{"netscape", "konqueror", "htmlview", "xdg-open"};
    return std::any_of(programs.begin(), programs.end(), [&](const char* program) {
        QProcess process;
        process.setProgram(QLatin1StringView(program));
        process.setArguments({name});
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        return process.startDetached();
    });
}
