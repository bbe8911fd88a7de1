// SPDX-License-Identifier: MIT
#pragma once

#include "browser/helpfinddialog.h"

#include <QObject>

/// Searching the page shown: opens the find dialog and repeats the last search without it. Owns the dialog.
class PageSearch : public QObject {
    Q_OBJECT

public:
    /// `window` is the parent of the dialog; it and `browser` must outlive this object.
    PageSearch(QWidget* window, HelpBrowser* browser);
    ~PageSearch() override;

    /// Opens the dialog, or brings the open one to the front, with the selected text to look for.
    void editFind();
    /// Opens the dialog when nothing has been looked for yet.
    void findNext(bool forward);
    /// What was looked for last, here or elsewhere; empty for nothing.
    [[nodiscard]] QString lastText() const;
    void setLastText(const QString& text);
    /// Closes the dialog if it is open.
    void close();

private:
    [[nodiscard]] HelpFindDialog* dialog();
    void editFindDialogDone();

    QWidget* m_window;
    HelpBrowser* m_browser;
    HelpFindDialog* m_findDialog = nullptr;
    HelpFindDialog::Search m_lastSearch;
};
