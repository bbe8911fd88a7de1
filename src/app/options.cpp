// SPDX-License-Identifier: MIT
#include "app/options.h"

#include "app/arguments.h"
#include "app/dump.h"
#include "app/render.h"
#include "app/requests.h"
#include "app/screenshot.h"
#include "app/searchcommand.h"
#include "app/viewer.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

namespace {

/// How an option stands on the command line.
enum class Form {
    Request, ///< with any prefix and exactly one argument; else it is a file name for the viewer
    Alone,   ///< likewise, without an argument
    Command, ///< with arguments of its own; what it cannot use is an error
};

/// Everything that the program knows of an option.
struct Option {
    const char* name;
    Form form;
    const char* arguments; ///< as the help text writes them
    const char* help;      ///< lines
    /// Returns the exit status; nothing when the arguments are wrong.
    std::optional<int> (*serve)(int argc, char* argv[]);
};

std::optional<int> printHelp(int argc, char* argv[]);

std::optional<int> printVersion(int /*argc*/, char* /*argv*/[])
{
    std::printf("Quenda %s\n", QUENDA_VERSION);
    return 0;
}

constexpr std::array options{
    Option{"show", Form::Request, "FILE.cnt",
           QT_TRANSLATE_NOOP("Usage", "start as without arguments, then show this help set"), runViewer},
    Option{"install", Form::Request, "FILE.cnt",
           QT_TRANSLATE_NOOP("Usage", "add the file to the installed contents list"), serveInstall},
    Option{"uninstall", Form::Request, "FILE.cnt", QT_TRANSLATE_NOOP("Usage", "remove it from the list"),
           serveUninstall},
    Option{"isinstall", Form::Request, "FILE.cnt",
           QT_TRANSLATE_NOOP("Usage", "tell whether it is in the list"), serveIsinstall},
    Option{"search", Form::Command, "WORDS [--limit N] [--json] [--typing] [--in TITLE | FILE.cnt ...]",
           QT_TRANSLATE_NOOP("Usage", "find pages in these help sets, or in the installed ones, all or\n"
                                      "those with a title: one line each with file, title and a piece\n"
                                      "of the text; at most N (50), or all as one JSON object; the last\n"
                                      "word may be unfinished with --typing"),
           searchHelpSets},
    Option{"index", Form::Command, "FILE.cnt ...",
           QT_TRANSLATE_NOOP("Usage", "make the search's index of these help sets now"), indexHelpSets},
    Option{"dump", Form::Command, "FILE.cnt ...",
           QT_TRANSLATE_NOOP("Usage", "write contents, index and problems as JSON"), dumpHelpSets},
    Option{"screenshot", Form::Command, "OUT.png [FILE.cnt ...]",
           QT_TRANSLATE_NOOP("Usage", "draw the window into a picture, without a display"), takeScreenshot},
    Option{"pdf", Form::Command, "OUT.pdf [--as-written] [--whole] PAGE.html",
           QT_TRANSLATE_NOOP("Usage", "print a page into a PDF file, without a display"), renderPage},
    Option{"png", Form::Command, "OUT.png [--width W] [--as-written] [--whole] PAGE.html",
           QT_TRANSLATE_NOOP("Usage", "draw a page into a picture, W pixels wide (800)"), renderPage},
    Option{"text", Form::Command, "[--links] [--as-written] [--whole] PAGE.html",
           QT_TRANSLATE_NOOP("Usage", "print a page as plain text, as wide as COLUMNS says (80); --links\n"
                                      "numbers its links and lists where they lead; this, --pdf and --png\n"
                                      "take the beginning of a page that takes long, with --whole all of it"),
           renderPage},
    Option{"help", Form::Alone, "", QT_TRANSLATE_NOOP("Usage", "write this text and exit"), printHelp},
    Option{"version", Form::Alone, "", QT_TRANSLATE_NOOP("Usage", "write the version and exit"),
           printVersion},
};

QString synopsis(const Option& option)
{
    const QString name = QStringLiteral("--") + QLatin1StringView(option.name);
    return option.arguments[0] == '\0' ? name : name + u' ' + QLatin1StringView(option.arguments);
}

std::optional<int> printHelp(int /*argc*/, char* /*argv*/[])
{
    QString text = QCoreApplication::translate("Usage", R"(Usage: quenda [FILE.cnt ...]
       quenda OPTION

Opens the help sets of the contents files FILE.cnt in a window; without
arguments the help sets that were open last, else all installed ones.

)");
    for (const auto& option : options) {
        QString help = QCoreApplication::translate("Usage", option.help);
        help.replace(u'\n', QStringLiteral("\n        "));
        text += QStringLiteral("  %1\n        %2\n").arg(synopsis(option), help);
    }
    text += QCoreApplication::translate("Usage", R"(
The three list requests print one line and exit with 0 (done, or yes),
1 (file not found) or 2 (already installed, or not installed). --search exits
with 0 when it finds pages, 1 when it finds none, 2 on errors. --dump exits
with 1 when a named file is missing or unreadable; --screenshot, --pdf,
--png and --text when they cannot do their work. Wrong arguments exit with 2.
)");
    std::fputs(qUtf8Printable(text), stdout);
    return 0;
}

bool isMeant(const Option& option, int argc, char* argv[])
{
    constexpr int argumentsOfRequest = 3; // with the program
    switch (option.form) {
    case Form::Request:
        return argc == argumentsOfRequest && isOption(argv[1], option.name);
    case Form::Alone:
        return argc == 2 && std::string_view(argv[1]) == "--" + std::string(option.name);
    case Form::Command:
        return argc > 1 && std::string_view(argv[1]) == "--" + std::string(option.name);
    }
    return false;
}

int reportUsage(const Option& option)
{
    complain(QCoreApplication::translate("Usage", "usage: quenda %1").arg(synopsis(option)));
    return 2;
}

} // namespace

int serveCommandLine(int argc, char* argv[])
{
    const auto* option = std::find_if(options.begin(), options.end(),
                                      [&](const Option& each) { return isMeant(each, argc, argv); });
    const auto status = option == options.end() ? runViewer(argc, argv) : option->serve(argc, argv);
    return status ? *status : reportUsage(*option);
}
