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

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTimer>

/// A window with a library of its own, and what a user does to it with mouse and keyboard. Dialogs and menus
/// that come up are closed soon.
class WindowUser {
public:
    WindowUser()
    {
        m_window.setPersistent(false);
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
