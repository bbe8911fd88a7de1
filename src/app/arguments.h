// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <string_view>

/// Whether an argument is one of the three forms of an option: "--name", "-name" or "/name".
[[nodiscard]] bool isOption(std::string_view argument, std::string_view name);

/// A file name from the command line: as the locale encodes it, else as Latin-1 when only that names a file.
[[nodiscard]] QString fileNameArgument(const char* argument);

/// The same, made absolute.
[[nodiscard]] QString absoluteFileNameArgument(const char* argument);
/// All from argv[2] on.
[[nodiscard]] QStringList absoluteFileNameArguments(int argc, char* argv[]);

/// A text in one line, as UTF-8. Control characters, which a terminal could act on, become question marks.
[[nodiscard]] QByteArray printable(const QString& text);

/// Writes a printable line to standard error, behind the program's name.
void complain(const QString& text);

/// Lets the toolkit run without a display, unless the user chose a platform; call it before the application
/// object is made.
void useOffscreenPlatform();
