// SPDX-License-Identifier: MIT
#include "app/requests.h"

#include "app/arguments.h"
#include "library/installedcontents.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSettings>

#include <cstdio>

namespace {

using InstalledContents::Answer;
using InstalledContents::Outcome;

/// A folder is there and yet no help set.
void explain(const QString& fileName)
{
    if (QFileInfo(fileName).isDir()) {
        complain(QCoreApplication::translate("Requests", "the folder \"%1\" has no pages").arg(fileName));
    }
}

int report(const char* fileName, const Outcome& outcome, const char* yes, const char* no)
{
    // The name goes out byte for byte as it came in.
    if (outcome.answer == Answer::NotFound) {
        std::printf("contents file \"%s\" not found\n", fileName);
        explain(fileNameArgument(fileName));
    } else {
        std::printf("contents \"%s\" %s\n", fileName, outcome.answer == Answer::Yes ? yes : no);
    }
    std::fflush(stdout);
    if (!outcome.stored) {
        complain(QCoreApplication::translate("Requests", "the settings store \"%1\" cannot be written")
                     .arg(QSettings().fileName()));
    }
    return int(outcome.answer);
}

} // namespace

std::optional<int> serveInstall(int /*argc*/, char* argv[])
{
    return report(argv[2], InstalledContents::installContents(fileNameArgument(argv[2])), "installed",
                  "already installed");
}

std::optional<int> serveUninstall(int /*argc*/, char* argv[])
{
    return report(argv[2], InstalledContents::uninstallContents(fileNameArgument(argv[2])), "uninstalled",
                  "not installed");
}

std::optional<int> serveIsinstall(int /*argc*/, char* argv[])
{
    return report(argv[2], {InstalledContents::isinstallContents(fileNameArgument(argv[2]))}, "installed",
                  "not installed");
}
