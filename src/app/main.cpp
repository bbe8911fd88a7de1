// SPDX-License-Identifier: MIT
#include "app/arguments.h"
#include "app/dump.h"
#include "app/render.h"
#include "app/requests.h"
#include "app/screenshot.h"
#include "app/searchcommand.h"
#include "app/usage.h"
#include "app/viewer.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

int runDump(int argc, char* argv[])
{
    QStringList fileNames;
    for (int i = 2; i < argc; ++i) {
        fileNames.append(absoluteFileNameArgument(argv[i]));
    }
    return dump(fileNames);
}

int reportUsageError(const char* option)
{
    complain(QCoreApplication::translate("Usage", "%1 needs a file name; see quenda --help")
                 .arg(QLatin1StringView(option)));
    return 2;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("Quenda"));
    QCoreApplication::setOrganizationName(QStringLiteral("Orvanel"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUENDA_VERSION));

    if (const auto status = serveRequest(argc, argv)) {
        return *status;
    }
    const std::string_view first = argc > 1 ? argv[1] : "";
    if (argc == 2 && first == "--help") {
        printUsage();
        return 0;
    }
    if (argc == 2 && first == "--version") {
        printVersion();
        return 0;
    }
    if (first == "--dump") {
        return argc > 2 ? runDump(argc, argv) : reportUsageError(argv[1]);
    }
    if (first == "--screenshot") {
        return argc > 2 ? takeScreenshot(argc, argv) : reportUsageError(argv[1]);
    }
    if (first == "--pdf" || first == "--png") {
        return renderPage(argc, argv);
    }
    if (first == "--search") {
        return searchHelpSets(argc, argv);
    }
    if (first == "--index") {
        return argc > 2 ? indexHelpSets(argc, argv) : reportUsageError(argv[1]);
    }
    return runViewer(argc, argv);
}
