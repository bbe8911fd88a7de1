// SPDX-License-Identifier: MIT
// Writes, for each page named on standard input, a line of JSON with the text that the page view holds.
#include "browser/pagefiller.h"
#include "browser/picturefile.h"
#include "pages/pagefile.h"
#include "pages/pagepreparation.h"

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
    const auto page =
        preparePage(source.value().text,
                    {file, [](const QString& name) { return qMax(0, PictureFile(name).size().width()); }},
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

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    for (std::string line; std::getline(std::cin, line);) {
        const auto object = describePage(QString::fromLocal8Bit(line.data(), qsizetype(line.size())));
        std::cout << QJsonDocument(object).toJson(QJsonDocument::Compact).constData() << '\n';
    }
    return 0;
}
