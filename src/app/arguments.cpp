// SPDX-License-Identifier: MIT
#include "app/arguments.h"

#include "library/helplibrary.h"

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <cstdio>

bool isOption(std::string_view argument, std::string_view name)
{
    static constexpr std::array<std::string_view, 3> prefixes{"--", "-", "/"};
    return std::any_of(prefixes.begin(), prefixes.end(), [&](std::string_view prefix) {
        return argument.starts_with(prefix) && argument.substr(prefix.size()) == name;
    });
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

QStringList absoluteFileNameArguments(int argc, char* argv[])
{
    QStringList names;
    for (int i = 2; i < argc; ++i) {
        names += absoluteFileNameArgument(argv[i]);
    }
    return names;
}

QByteArray printable(const QString& text)
{
    QString line = text;
    for (auto& c : line) {
        c = c.category() == QChar::Other_Control ? QChar(u'?') : c;
    }
    return line.toUtf8();
}

void complain(const QString& text)
{
    std::fprintf(stderr, "quenda: %s\n", printable(text).constData());
}

void useOffscreenPlatform()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // The offscreen platform reports what it cannot do; what matters to the user is said by complain().
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.*=false\ndefault.warning=false"));
}
