// SPDX-License-Identifier: MIT
#include "desk/pagesearch.h"

#include "browser/helpbrowser.h"

#include <QTextDocumentFragment>

#include <utility>

PageSearch::PageSearch(QWidget* window, HelpBrowser* browser)
    : QObject(window), m_window(window), m_browser(browser)
{
}

PageSearch::~PageSearch()
{
    delete m_findDialog;
}

HelpFindDialog* PageSearch::dialog()
{
    if (m_findDialog == nullptr) {
        m_findDialog = new HelpFindDialog(m_window, m_browser);
        m_findDialog->setSearch(m_lastSearch);
        connect(m_findDialog, qOverload<>(&HelpFindDialog::done), this, &PageSearch::editFindDialogDone);
    }
    return m_findDialog;
}

void PageSearch::editFind()
{
    dialog()->resetFind();
    dialog()->setFindText(m_browser->textCursor().selection().toPlainText());
    dialog()->show();
    dialog()->raise();
    dialog()->activateWindow();
}

void PageSearch::findNext(bool forward)
{
    if (dialog()->findText().isEmpty()) {
        editFind();
    } else {
        dialog()->findNext(forward);
    }
}

QString PageSearch::lastText() const
{
    return m_findDialog != nullptr ? m_findDialog->findText() : m_lastSearch.text;
}

void PageSearch::setLastText(const QString& text)
{
    m_lastSearch.text = text;
    if (m_findDialog != nullptr) {
        m_findDialog->setFindText(text);
    }
}

void PageSearch::close()
{
    if (m_findDialog != nullptr) {
        m_findDialog->reject();
    }
}

void PageSearch::editFindDialogDone()
{
    if (m_findDialog != nullptr) {
        m_lastSearch = m_findDialog->search();
        // The call comes out of the dialog itself.
        std::exchange(m_findDialog, nullptr)->deleteLater();
    }
}
