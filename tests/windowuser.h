// SPDX-License-Identifier: MIT
#pragma once

#include "browser/helpbrowser.h"
#include "browser/pagebudget.h"
#include "contents/helpcontentslistview.h"
#include "index/helpindexlistbox.h"
#include "library/helplibrary.h"
#include "mainwindow/helpmainwindow.h"
#include "pages/linkcode.h"
#include "pages/preparedpage.h"
#include "search/searchlist.h"
#include "search/searchpane.h"
#include "search/searchsummary.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTimer>

/// A window with a library of its own, and what a user does to it with mouse and keyboard. Its help sets are
/// indexed, and it remembers its state. Dialogs and menus that come up are closed soon.
class WindowUser {
public:
    WindowUser()
    {
        m_window.resize(900, 620); // NOLINT(*-magic-numbers)
        m_window.show();
        QObject::connect(&m_closer, &QTimer::timeout, [] {
            for (auto* widget : {QApplication::activePopupWidget(), QApplication::activeModalWidget()}) {
                if (widget != nullptr) {
                    widget->close();
                }
            }
        });
        m_closer.start(1);
    }

    void leaveDialogsOpen() { m_closer.stop(); }
    /// The modal dialog that is open, as soon as there is one.
    template <typename Dialog>
    [[nodiscard]] static Dialog* openDialog()
    {
        const auto open = [] { return qobject_cast<Dialog*>(QApplication::activeModalWidget()); };
        [[maybe_unused]] const bool isOpen = QTest::qWaitFor([&] { return open() != nullptr; });
        return open();
    }

    [[nodiscard]] HelpMainWindow& window() { return m_window; }
    [[nodiscard]] HelpLibrary& library() { return m_library; }
    template <typename Widget>
    [[nodiscard]] Widget& the()
    {
        return *m_window.findChild<Widget*>();
    }
    [[nodiscard]] HelpBrowser& browser() { return the<HelpBrowser>(); }

    void open(const QString& contentsFile)
    {
        m_window.insertContents(contentsFile);
        m_window.gotoFirstPage();
    }

    void waitUntilLoaded()
    {
        while (m_library.isBusy()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        QCoreApplication::processEvents();
    }

    /// All of the window's.
    [[nodiscard]] QList<QAction*> commands()
    {
        return m_window.findChildren<QAction*>(QRegularExpression(QStringLiteral("^[a-z].*Action$")),
                                               Qt::FindDirectChildrenOnly);
    }

    void trigger(const char* action)
    {
        if (auto* found = m_window.findChild<QAction*>(QLatin1StringView(action))) {
            found->trigger();
        }
    }

    /// Rows are counted as they stand in the view; a double click opens and closes books.
    void clickRow(int row, bool twice = false)
    {
        the<QTabWidget>().setCurrentIndex(0);
        auto& tree = the<HelpContentsListView>();
        auto index = tree.model()->index(0, 0);
        for (int i = 0; i < row && index.isValid(); ++i) {
            index = tree.indexBelow(index);
        }
        if (index.isValid()) {
            tree.scrollTo(index);
            const QPoint place = tree.visualRect(index).center();
            QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, place);
            if (twice) {
                QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, place);
            }
        }
    }

    /// Types into the field over the keyword list, then opens the keyword found.
    void lookUp(const QString& text)
    {
        the<QTabWidget>().setCurrentIndex(1);
        auto* field = the<HelpIndexListBox>().parentWidget()->findChild<QLineEdit*>();
        field->clear();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }

    /// Types into the field of the search.
    void typeQuery(const QString& words)
    {
        trigger("editSearchAllAction");
        auto* field = the<SearchPane>().findChild<QLineEdit*>();
        field->clear();
        QTest::keyClicks(field, words);
    }

    /// Searches when all pages are indexed; the pages found, -1 when there is no answer.
    int search(const QString& words)
    {
        for (const auto& query : {words, words}) { // the first answer may be about a part of the pages
            typeQuery(query);
            const bool isAnswered = QTest::qWaitFor(
                [this] {
                    const QString text = the<SearchSummary>().text();
                    return !text.contains(SearchSummary::tr("Pages are still being indexed.")) &&
                           (the<SearchList>().model()->rowCount() > 0 || text.contains(u"No page has"));
                },
                MaximumWait);
            if (!isAnswered) {
                return -1;
            }
        }
        return the<SearchList>().model()->rowCount();
    }

    /// Clicks the first of the page's own links with at least this number, not the one that shows more of the
    /// page.
    void followLink(size_t number)
    {
        const auto& links = browser().page().prepared.links;
        if (number >= links.size() || PageBudget::isWholePageLink(links[number].href)) {
            return;
        }
        const QTextCursor place = linkPlace(linkCode(number));
        if (!place.isNull()) {
            browser().setTextCursor(place);
            browser().ensureCursorVisible();
            const QPoint point = browser().cursorRect(place).center() + QPoint(3, 0);
            QTest::mouseMove(browser().viewport(), point);
            QTest::mouseClick(browser().viewport(), Qt::LeftButton, {}, point);
        }
    }

private:
    static constexpr int MaximumWait = 60'000; // ms

    [[nodiscard]] QTextCursor linkPlace(const QString& code)
    {
        constexpr int fewBlocks = 2000;
        int looked = 0;
        for (auto block = browser().document()->begin(); block.isValid() && looked < fewBlocks;
             block = block.next(), ++looked) {
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                if (it.fragment().charFormat().anchorHref() == code) {
                    QTextCursor cursor(block);
                    cursor.setPosition(it.fragment().position());
                    return cursor;
                }
            }
        }
        return {};
    }

    HelpLibrary m_library;
    HelpMainWindow m_window{m_library};
    QTimer m_closer;
};
