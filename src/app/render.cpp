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
    bool isPdf = false;
    const char* output = nullptr;
    const char* page = nullptr;
    int width = DefaultWidth;
    Presentation presentation = Presentation::Reading;
};

std::optional<int> parseWidth(const char* text)
{
    const int width = QByteArray(text).toInt();
    return width > 0 && width <= PageRendering::MaximumWidth ? std::optional(width) : std::nullopt;
}

std::optional<Job> parse(int argc, char* argv[])
{
    Job job;
    job.isPdf = std::string_view(argv[1]) == "--pdf";
    for (int i = 2; i < argc; ++i) {
        const std::string_view argument(argv[i]);
        if (argument == "--as-written") {
            job.presentation = Presentation::AsWritten;
        } else if (argument == "--width" && !job.isPdf && i + 1 < argc) {
            const auto width = parseWidth(argv[++i]);
            if (!width) {
                return std::nullopt;
            }
            job.width = *width;
        } else if (job.output == nullptr) {
            job.output = argv[i];
        } else if (job.page == nullptr) {
            job.page = argv[i];
        } else {
            return std::nullopt;
        }
    }
    return job.page == nullptr ? std::nullopt : std::optional(job);
}

} // namespace

std::optional<int> renderPage(int argc, char* argv[])
{
    const auto job = parse(argc, argv);
    if (!job) {
        return std::nullopt;
    }
    useOffscreenPlatform();
    // The arguments are ours, the toolkit's options are not among them.
    int toolkitArgc = 1;
    const QApplication application(toolkitArgc, argv);
    const QString page = fileNameArgument(job->page);
    const QString output = fileNameArgument(job->output);
    const QString problem = job->isPdf ? PageRendering::toPdf(page, output, job->presentation)
                                       : PageRendering::toPng(page, output, job->width, job->presentation);
    if (problem.isEmpty()) {
        return 0;
    }
    complain(QCoreApplication::translate("Render", R"("%1" to "%2": %3)").arg(page, output, problem));
    return 1;
}
