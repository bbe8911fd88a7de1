// SPDX-License-Identifier: MIT
#include "app/arguments.h"

#include "library/helplibrary.h"

#include <QFile>

bool isOption(std::string_view argument, std::string_view name)
{
    for (const std::string_view prefix : {"--", "-", "/"}) {
        if (argument.starts_with(prefix) && argument.substr(prefix.size()) == name) {
            return true;
        }
    }
    return false;
}

QString fileNameArgument(const char* argument)
{
    const QString name = QFile::decodeName(argument);
    const QString latin1 = QString::fromLatin1(argument);
    return !HelpLibrary::isFile(name) && HelpLibrary::isFile(latin1) ? latin1 : name;
}

QString absoluteFileNameArgument(const char* argument)
{
    return HelpLibrary::absoluteName(fileNameArgument(argument));
}
