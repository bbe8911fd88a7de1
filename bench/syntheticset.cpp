// SPDX-License-Identifier: MIT
#include "syntheticset.h"

#include <QDir>
#include <QFile>

#include <array>

namespace {

constexpr int BookSize = 12;
constexpr int PagesWritten = 4;
constexpr std::array words{"window", "search", "style",  "layer",  "image",  "table",  "record", "file",
                           "letter", "number", "colour", "border", "frame",  "column", "editor", "folder",
                           "symbol", "margin", "header", "paper",  "signal", "server", "cursor", "widget"};
constexpr std::array verbs{"Opening", "Naming",  "Tracing", "Hiding",  "Tuning",
                           "Copying", "Merging", "Closing", "Linking", "Mapping"};

template <typename Words>
QByteArray word(const Words& list, unsigned number)
{
    return list[number % list.size()];
}

void write(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qUtf8Printable(name));
    }
}

QByteArray pageName(int topic)
{
    return "topics/" + QByteArray::number(topic / 1000) + "/topic" + QByteArray::number(topic) + ".html";
}

QByteArray contents(int topics)
{
    QByteArray text(":title = Bench\n:index = bench.idx\n\n");
    for (int i = 0; i < topics; ++i) {
        const auto number = QByteArray::number(i);
        if (i % (BookSize * BookSize) == 0) {
            text += "Part " + number + " = " + pageName(i) + '\n';
        }
        if (i % BookSize == 0) {
            text += "\tBook " + number + " of " + word(words, unsigned(i) / BookSize) + '\n';
        }
        text += "\t\t" + word(verbs, unsigned(i)) + ' ' + word(words, unsigned(i) / 7) + ' ' + number +
                " = " + pageName(i) + '\n';
    }
    return text;
}

QByteArray index(SyntheticSize size)
{
    QByteArray text;
    unsigned random = 1;
    for (int i = 0; i < size.keywords; ++i) {
        random = random * 1664525U + 1013904223U;
        const unsigned chosen = random >> 8U;
        const bool repeats = i % 10 == 9;
        const QByteArray keyword = word(words, chosen) + ' ' + word(words, chosen / 31) + ' ' +
                                   QByteArray::number(repeats ? chosen % 1000 : chosen % 10'000'000);
        text += (i % 5 == 4 ? "\t" : "") + (repeats ? keyword.toUpper() : keyword) + " = " +
                pageName(int(chosen % unsigned(size.topics))) + '\n';
    }
    return text;
}

/// Long enough to be scrolled; the start page shows the second colour only then.
QByteArray page(int number, const char* colour)
{
    QByteArray text("<html><head><title>Page</title></head><body bgcolor=\"");
    text += QByteArray(colour) + "\"><h1>Page " + QByteArray::number(number) + "</h1>\n";
    for (int line = 0; line < 60; ++line) {
        text += "<p>A line of text about <b>" + word(words, unsigned(line)) +
                "</b> and a <a href=\"topic1.html\">link</a>.</p>\n";
        if (line == 20) {
            text += "<table width=\"100%\" bgcolor=\"" + QByteArray(ScrolledColour) + "\"><tr><td>" +
                    QByteArray("<br>").repeated(30) + "</td></tr></table>\n";
        }
    }
    return text + "</body></html>\n";
}

} // namespace

QString writeSyntheticSet(const QString& dir, SyntheticSize size)
{
    QDir().mkpath(dir + QStringLiteral("/topics/0"));
    write(dir + QStringLiteral("/bench.cnt"), contents(size.topics));
    write(dir + QStringLiteral("/bench.idx"), index(size));
    for (int i = 0; i < PagesWritten; ++i) {
        write(dir + u'/' + QString::fromLatin1(pageName(i)), page(i, i == 0 ? StartColour : "#ffffff"));
    }
    return dir + QStringLiteral("/bench.cnt");
}
