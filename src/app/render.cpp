// SPDX-License-Identifier: MIT
#include "app/render.h"

#include "app/arguments.h"
#include "mainwindow/pagerendering.h"

#include <QApplication>

#include <cstdio>
#include <optional>
#include <string_view>

namespace {

constexpr int DefaultWidth = 800; // pixels

constexpr int DefaultColumns = 80;

enum class Target { Pdf, Png, Text };

struct Job {
    Target target = Target::Text;
    const char* output = nullptr; ///< null for the standard output
    const char* page = nullptr;
    int width = DefaultWidth;
    bool hasLinks = false;
    PageRendering::Options options;
};

std::optional<int> parseWidth(const char* text)
{
    const int width = QByteArray(text).toInt();
    return width > 0 && width <= PageRendering::MaximumWidth ? std::optional(width) : std::nullopt;
}

/// Takes an option, and what belongs to it, from the arguments; false when it is none.
bool takeOption(Job& job, int argc, char* argv[], int& i)
{
    const std::string_view argument(argv[i]);
    if (argument == "--as-written") {
        job.options.presentation = Presentation::AsWritten;
    } else if (argument == "--whole") {
        job.options.isWhole = true;
    } else if (argument == "--links" && job.target == Target::Text) {
        job.hasLinks = true;
    } else if (argument == "--width" && job.target == Target::Png && i + 1 < argc) {
        job.width = parseWidth(argv[++i]).value_or(0);
    } else {
        return false;
    }
    return true;
}

std::optional<Job> parse(int argc, char* argv[])
{
    Job job;
    const std::string_view first(argv[1]);
    job.target = first == "--pdf" ? Target::Pdf : first == "--png" ? Target::Png : Target::Text;
    for (int i = 2; i < argc; ++i) {
        if (takeOption(job, argc, argv, i)) {
            continue;
        }
        if (job.target != Target::Text && job.output == nullptr) {
            job.output = argv[i];
        } else if (job.page == nullptr) {
            job.page = argv[i];
        } else {
            return std::nullopt;
        }
    }
    return job.page == nullptr || job.width == 0 ? std::nullopt : std::optional(job);
}

int columns()
{
    const int wanted = qEnvironmentVariableIntValue("COLUMNS");
    return wanted > 0 ? wanted : DefaultColumns;
}

PageRendering::Outcome render(const Job& job, const QString& page)
{
    const QString output = job.output == nullptr ? QString() : fileNameArgument(job.output);
    switch (job.target) {
    case Target::Pdf:
        return PageRendering::toPdf(page, output, job.options);
    case Target::Png:
        return PageRendering::toPng(page, output, job.width, job.options);
    case Target::Text:
        break;
    }
    QString text;
    auto outcome = PageRendering::toText(page, text, columns(), job.hasLinks, job.options);
    const QByteArray bytes = text.toUtf8();
    const bool isWritten =
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) == size_t(bytes.size()) &&
        std::fflush(stdout) == 0;
    if (!isWritten) {
        outcome.problem = QCoreApplication::translate("Render", "The text cannot be written.");
    }
    return outcome;
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
    const auto outcome = render(*job, page);
    const QString name = job->output == nullptr ? QStringLiteral("\"%1\"").arg(page)
                                                : QCoreApplication::translate("Render", R"("%1" to "%2")")
                                                      .arg(page, fileNameArgument(job->output));
    for (const auto& sentence : {outcome.problem, outcome.notice}) {
        if (!sentence.isEmpty()) {
            complain(name + QStringLiteral(": ") + sentence);
        }
    }
    return outcome.problem.isEmpty() ? 0 : 1;
}
