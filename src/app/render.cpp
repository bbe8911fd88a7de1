// SPDX-License-Identifier: MIT
#include "app/render.h"

#include "app/arguments.h"
#include "mainwindow/pagerendering.h"

#include <QApplication>

#include <optional>
#include <string_view>

namespace {

constexpr int DefaultWidth = 800; // pixels

struct Job {
    const char* output;
    const char* page;
    int width = DefaultWidth;
};

std::optional<Job> parse(int argc, char* argv[])
{
    const bool isPng = std::string_view(argv[1]) == "--png";
    if (argc == 4) {
        return Job{argv[2], argv[3]};
    }
    if (argc != 6 || !isPng || std::string_view(argv[3]) != "--width") {
        return std::nullopt;
    }
    const int width = QByteArray(argv[4]).toInt();
    return width > 0 && width <= PageRendering::MaximumWidth ? std::optional(Job{argv[2], argv[5], width})
                                                             : std::nullopt;
}

} // namespace

int renderPage(int argc, char* argv[])
{
    const auto job = parse(argc, argv);
    if (!job) {
        complain(QCoreApplication::translate("Usage", "usage: quenda --pdf OUT.pdf PAGE.html, or "
                                                      "quenda --png OUT.png [--width W] PAGE.html"));
        return 2;
    }
    const bool isPdf = std::string_view(argv[1]) == "--pdf";
    useOffscreenPlatform();
    // The arguments are ours, the toolkit's options are not among them.
    int toolkitArgc = 1;
    const QApplication application(toolkitArgc, argv);
    const QString page = fileNameArgument(job->page);
    const QString output = fileNameArgument(job->output);
    const QString problem =
        isPdf ? PageRendering::toPdf(page, output) : PageRendering::toPng(page, output, job->width);
    if (problem.isEmpty()) {
        return 0;
    }
    complain(QCoreApplication::translate("Render", R"("%1" to "%2": %3)").arg(page, output, problem));
    return 1;
}
