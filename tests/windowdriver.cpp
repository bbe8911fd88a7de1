// SPDX-License-Identifier: MIT
// Usage: windowdriver WORDS FILE.cnt ...
// Opens help sets in the window, offscreen, and uses them like somebody who wants to see everything, with a
// search for WORDS: for tests that limit its time and memory and watch what it opens. Writes what it saw as a
// JSON object.
#include "app/memory.h"
#include "windowuser.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QPixmap>

#include <cstdio>

namespace {

constexpr int Rows = 10;

/// False when a page is blank without a reason.
bool readAround(WindowUser& user)
{
    bool isBlank = false;
    for (int row = 0; row < Rows; ++row) {
        user.clickRow(row, row % 2 == 0);
        QCoreApplication::processEvents();
        isBlank |= user.browser().getCurrentLink() != nullptr && user.browser().document()->isEmpty();
    }
    user.lookUp(QStringLiteral("aB"));
    user.clickRow(0);
    user.followLink(0);
    QCoreApplication::processEvents();
    user.trigger("goBackAction");
    return !isBlank;
}

} // namespace

int main(int argc, char* argv[])
{
    returnFreedMemory();
    QCoreApplication::setApplicationName(QStringLiteral("Quenda"));
    QCoreApplication::setOrganizationName(QStringLiteral("Orvanel"));
    const QApplication application(argc, argv);
    WindowUser user;
    for (const auto& name : QApplication::arguments().sliced(2)) {
        user.open(HelpLibrary::absoluteName(name));
    }
    user.waitUntilLoaded();
    QJsonObject seen;
    seen[u"rows"] = qint64(user.library().topRows().size());
    seen[u"keywords"] = qint64(user.library().keywordIndex().rows().size());
    seen[u"page"] = user.browser().toPlainText().simplified().left(100); // NOLINT(*-magic-numbers)
    seen[u"readable"] = readAround(user);
    seen[u"hits"] = user.search(QApplication::arguments().at(1));
    const bool isDrawn = !user.window().grab().isNull();
    std::puts(QJsonDocument(seen).toJson(QJsonDocument::Compact));
    return isDrawn && user.window().close() ? 0 : 1;
}
