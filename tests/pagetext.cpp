// SPDX-License-Identifier: MIT
// Writes, for each page named on standard input, a line of JSON with the text that the page view holds; with
// --tree with its elements and words, as they are read, and the page.
#include "browser/pagefiller.h"
#include "browser/picturefile.h"
#include "markup/htmltree.h"
#include "markup/tags.h"
#include "pages/pagefile.h"
#include "pages/pagepreparation.h"
#include "pages/pagesheets.h"

#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextDocument>

#include <iostream>
#include <string>

namespace {

QString foundByName(const PreparedPage& page)
{
    static constexpr std::array names{u"whole page", u"landmark", u"generator", u"density"};
    return page.isReading ? QStringView(names[size_t(page.foundBy)]).toString()
                          : QStringLiteral("as written");
}

QJsonObject describePage(const QString& file)
{
    const auto source = readPage(file);
    if (!source.ok()) {
        return {{QStringLiteral("file"), file}, {QStringLiteral("error"), describe(source.error())}};
    }
    static StyleSheets styleSheets;
    const auto page =
        preparePage(source.value().text,
                    {file, [](const QString& name) { return qMax(0, PictureFile(name).size().width()); },
                     false, &styleSheets},
                    Presentation::Reading);
    QTextDocument document;
    PageFiller filler(document);
    document.setHtml(filler.begin(page));
    while (filler.addPart()) {
    }
    return {{QStringLiteral("file"), file},
            {QStringLiteral("foundBy"), foundByName(page)},
            {QStringLiteral("plain"), page.text},
            {QStringLiteral("shown"), document.toPlainText().remove(QChar::ObjectReplacementCharacter)}};
}

/// Each element with a sign before its name and one at its end, each word, and a sign behind each of these.
QString treeText(const QString& html)
{
    const HtmlTree tree(html);
    std::string text;
    std::string open; // text that was met and may go on
    const auto put = [&text, &open](std::string_view begin, std::string_view rest) {
        anyWord(open, [&text](std::string_view word) {
            text.append(word).append("\x1f");
            return false;
        });
        open.clear();
        text.append(begin).append(rest).append("\x1f");
    };
    if (tree.root() != nullptr) {
        walk(
            *tree.root(),
            [&put, &open](const HtmlNode& node) {
                isElement(node) ? put("\x1e", node.name) : static_cast<void>(open += node.content);
                return isElement(node);
            },
            [&put](const HtmlNode&) { put("\x1d", {}); });
    }
    return toQString(text);
}

QJsonObject describeTree(const QString& file)
{
    const auto source = readPage(file);
    if (!source.ok()) {
        return {{QStringLiteral("file"), file}, {QStringLiteral("error"), describe(source.error())}};
    }
    return {{QStringLiteral("file"), file},
            {QStringLiteral("html"), source.value().text},
            {QStringLiteral("tree"), treeText(source.value().text)}};
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const bool isTree = argc > 1 && std::string_view(argv[1]) == "--tree";
    for (std::string line; std::getline(std::cin, line);) {
        const QString file = QString::fromLocal8Bit(line.data(), qsizetype(line.size()));
        const auto object = isTree ? describeTree(file) : describePage(file);
        std::cout << QJsonDocument(object).toJson(QJsonDocument::Compact).constData() << '\n';
    }
    return 0;
}
