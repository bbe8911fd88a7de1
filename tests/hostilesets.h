// SPDX-License-Identifier: MIT
#pragma once

#include "testfiles.h"

#include <functional>
#include <sys/stat.h>
#include <unistd.h>

/// Makers of help sets that nobody should make.

using Make = std::function<void(TemporaryFiles&)>;

/// Writes a file, by default the contents file.
inline Make file(const QByteArray& bytes, const char* name = "a.cnt")
{
    return [=](TemporaryFiles& files) { files.write(QString::fromUtf8(name), bytes); };
}

/// A help set with one page.
inline Make page(const QByteArray& html)
{
    return [=](TemporaryFiles& files) {
        files.write(QStringLiteral("a.cnt"), "p = a.html");
        files.write(QStringLiteral("a.html"), html);
    };
}

/// A help set with one index file.
inline Make index(const QByteArray& text)
{
    return [=](TemporaryFiles& files) {
        files.write(QStringLiteral("a.cnt"), ":index = a.idx\np = a.idx");
        files.write(QStringLiteral("a.idx"), text);
    };
}

/// Puts what is no file in the place of one.
inline Make odd(const char* kind, const char* name = "a.cnt")
{
    return [=](TemporaryFiles& files) {
        const QByteArray path = files.path(QString::fromUtf8(name)).toUtf8();
        const std::string_view what(kind);
        if (what == "pipe") {
            QCOMPARE(::mkfifo(path, S_IRUSR | S_IWUSR), 0);
        } else if (what == "directory") {
            QCOMPARE(::mkdir(path, S_IRWXU), 0);
        } else if (what == "socket") {
            QCOMPARE(::mknod(path, S_IFSOCK | S_IRUSR, 0), 0);
        } else if (what == "sparse" || what == "unreadable") {
            files.write(QString::fromUtf8(name), {});
            QCOMPARE(::truncate(path, what == "sparse" ? (1L << 30) + 1 : 1), 0);
            QCOMPARE(::chmod(path, what == "sparse" ? S_IRUSR : 0), 0);
        } else {
            QCOMPARE(::symlink(kind, path), 0);
        }
    };
}

/// The contents file, and what it names.
inline Make with(const Make& a, const Make& b)
{
    return [=](TemporaryFiles& files) {
        a(files);
        b(files);
    };
}

inline QByteArray lines(int count, QByteArray (*line)(int))
{
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        text += line(i) + '\n';
    }
    return text;
}

/// A keyword that differs from the others in case only.
inline QByteArray caseVariant(int number)
{
    QByteArray word(16, 'a');
    for (int bit = 0; bit < 16; ++bit) {
        word[bit] = (number >> bit & 1) != 0 ? 'A' : 'a';
    }
    return word + " = " + QByteArray::number(number) + ".html";
}

/// A picture that grows when its entities are put in, and asks for a device.
inline QByteArray svgBomb()
{
    QByteArray text = "<!DOCTYPE svg [<!ENTITY x SYSTEM '/dev/zero'><!ENTITY e0 'xxxxxxxxxx'>";
    for (int i = 1; i < 9; ++i) {
        const QByteArray before = "&e" + QByteArray::number(i - 1) + ';';
        text += "<!ENTITY e" + QByteArray::number(i) + " '" + before.repeated(10) + "'>";
    }
    return text + "]><svg xmlns='http://www.w3.org/2000/svg' width='60000' height='60000'>"
                  "<text>&e8;&x;</text></svg>";
}

inline QByteArray svg(const QByteArray& head, const QByteArray& body)
{
    return head +
           "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='60' "
           "height='60'>" +
           body + "</svg>";
}

/// Contents files that each include the next one twice.
inline void makeDiamond(TemporaryFiles& files)
{
    for (int i = 0; i < 30; ++i) {
        const QByteArray next = QByteArray::number(i + 1) + ".cnt\n";
        files.write(i == 0 ? QStringLiteral("a.cnt") : QStringLiteral("%1.cnt").arg(i),
                    "x = " + next + "y = " + next + "p = a.html\n");
    }
}
