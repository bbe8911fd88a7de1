// SPDX-License-Identifier: MIT
#include "app/usage.h"

#include <QCoreApplication>

#include <cstdio>

void printUsage()
{
    const QString text = QCoreApplication::translate("Usage", R"(Usage: quenda [FILE.cnt ...]
       quenda --show FILE.cnt
       quenda --install | --uninstall | --isinstall FILE.cnt
       quenda --search WORDS [--limit N] [--json] [FILE.cnt ...]
       quenda --index FILE.cnt ...
       quenda --dump FILE.cnt ...
       quenda --screenshot OUT.png [FILE.cnt ...]
       quenda --pdf OUT.pdf [--as-written] PAGE.html
       quenda --png OUT.png [--width W] [--as-written] PAGE.html
       quenda --help | --version

Opens the help sets of the contents files FILE.cnt in a window; without
arguments the help sets that were open last, else all installed ones.

  --show FILE.cnt       start as without arguments, then show this help set
  --install FILE.cnt    add the file to the installed contents list
  --uninstall FILE.cnt  remove it from the list
  --isinstall FILE.cnt  tell whether it is in the list
  --search WORDS        find pages in these help sets, or in all installed ones:
                        one line each with file, title and a piece of the text;
                        at most N (50), or all as one JSON object
  --index               make the search's index of these help sets now
  --dump                write contents, index and problems as JSON
  --screenshot OUT.png  draw the window into a picture, without a display
  --pdf OUT.pdf         print a page into a PDF file, without a display
  --png OUT.png         draw a page into a picture, W pixels wide (800)
  --help, --version     write this text, or the version, and exit

The three list requests print one line and exit with 0 (done, or yes),
1 (file not found) or 2 (already installed, or not installed). --search exits
with 0 when it finds pages, 1 when it finds none, 2 on errors. --dump exits
with 1 when a named file is missing or unreadable; --screenshot, --pdf and
--png when they cannot do their work.
)");
    std::fputs(qUtf8Printable(text), stdout);
}

void printVersion()
{
    std::printf("Quenda %s\n", QUENDA_VERSION);
}
