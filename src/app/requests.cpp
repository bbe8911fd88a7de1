// SPDX-License-Identifier: MIT
#include "app/requests.h"

#include "app/arguments.h"
#include "library/installedcontents.h"

#include <QCoreApplication>
#include <QSettings>

#include <array>
#include <cstdio>

namespace {

using InstalledContents::Answer;
using InstalledContents::Outcome;

struct Request {
    std::string_view name;
    Outcome (*serve)(const QString& fileName);
    const char* yes;
    const char* no;
};

const std::array requests{
    Request{"install", InstalledContents::installContents, "installed", "already installed"},
    Request{"uninstall", InstalledContents::uninstallContents, "uninstalled", "not installed"},
    Request{"isinstall",
            [](const QString& fileName) { return Outcome{InstalledContents::isinstallContents(fileName)}; },
            "installed", "not installed"},
};

int serve(const Request& request, const char* fileName)
{
    const Outcome outcome = request.serve(fileNameArgument(fileName));
    // The name goes out byte for byte as it came in.
    if (outcome.answer == Answer::NotFound) {
        std::printf("contents file \"%s\" not found\n", fileName);
    } else {
        std::printf("contents \"%s\" %s\n", fileName,
                    outcome.answer == Answer::Yes ? request.yes : request.no);
    }
    std::fflush(stdout);
    if (!outcome.stored) {
        complain(QCoreApplication::translate("Requests", "the settings store \"%1\" cannot be written")
                     .arg(QSettings().fileName()));
    }
    return int(outcome.answer);
}

} // namespace

std::optional<int> serveRequest(int argc, char* argv[])
{
    if (argc != 3) {
        return std::nullopt;
    }
    for (const auto& request : requests) {
        if (isOption(argv[1], request.name)) {
            return serve(request, argv[2]);
        }
    }
    return std::nullopt;
}
