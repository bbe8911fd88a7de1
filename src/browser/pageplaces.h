// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class PageFiller;
class QTextBrowser;

/// Goes to places of the page in a view: positions in its text, and places that have names. Completes a long
/// page as far as that takes. The view and the filler of its document must outlive it.
class PagePlaces {
public:
    PagePlaces(QTextBrowser& view, PageFiller& filler) : m_view(view), m_filler(filler) {}

    /// Position in the text of what stands at the top of the view.
    [[nodiscard]] int place() const;
    /// A view that is not shown yet goes there when it is.
    void setPlace(int place);
    void viewIsShown();
    /// The place asked for last is one of another page.
    void forget() { m_pending = 0; }

    /// Goes to the named place of the page with this HTML and returns its position; -1 when the part of the
    /// page that is shown has none. The name may be written with percent escapes in links, in the page, or in
    /// neither.
    int goTo(const QString& anchor, const QString& html);

private:
    [[nodiscard]] int find(const QString& name, const QString& html);
    void scrollBeyond(const std::function<void()>& scroll);

    QTextBrowser& m_view;
    PageFiller& m_filler;
    int m_pending = 0; ///< to go to when the view is shown
};
