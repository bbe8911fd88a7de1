// SPDX-License-Identifier: MIT
#pragma once

#include "browser/recordpage.h"

#include <QDateTime>
#include <QSet>
#include <QTextBrowser>

#include <vector>

class HelpLibrary;
struct HelpContentsItem;
struct HelpIndexItem;

/// The page view: loads pages by its own rules (link policy, pages that say why there is none to show), keeps
/// a history of records and tells which navigation commands make sense. The library must outlive it.
class HelpBrowser : public QTextBrowser {
    Q_OBJECT

public:
    HelpBrowser(HelpLibrary& library, QWidget* parent);

    /// Record of the page shown; null when none.
    [[nodiscard]] HelpContentsItem* getCurrentLink() const { return m_currentLink; }
    /// The HTML or plain text of the page shown; empty when none.
    [[nodiscard]] const QString& sourceText() const { return m_shown.text; }
    /// The text painted while no page is shown.
    void setHint(const QString& hint);

    /// Shows the page of this name; the empty name clears the view.
    void setSource(const QString& url);
    /// Shows the record's page; null clears the view.
    virtual void setSource(HelpContentsItem* item);
    /// Shows the page named `url`; a null `item` means the record that the library finds for it.
    virtual void setSource(const QString& url, HelpContentsItem* item);
    /// Shows what a keyword entry leads to.
    void setSource(const HelpIndexItem& keyword);

    /// Link policy: true when the request has been dealt with here (picture window, external browser, empty
    /// name).
    [[nodiscard]] bool isUrlShow(const QString& url);

    void backward() override;
    void forward() override;
    void home() override;
    /// Forgets history, home page and current record; the page stays on the screen.
    virtual void clearLinks();

Q_SIGNALS:
    void sourceEmpty(bool value);
    void backEnabled(bool value);
    void forwardEnabled(bool value);
    void upEnabled(bool value);
    void homeEnabled(bool value);
    void syncEnabled(bool value);
    /// A page of a help set with this title is shown.
    void captionChanged(const QString& title);
    /// Target of the link under the pointer; empty when there is none.
    void linkHovered(const QString& target);
    /// Something about the page just shown that the user should know.
    void noticed(const QString& text);

protected Q_SLOTS:
    virtual void linkHighlighted(const QString& href);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
    QVariant loadResource(int type, const QUrl& name) override;
    void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override;

private:
    /// The page on the screen.
    struct Shown {
        QString file; ///< empty for pages of the viewer's own
        QDateTime modified;
        qint64 size = -1;
        QString text;
        QSet<QString> anchors;
        std::vector<RecordLink> targets; ///< of the links of a page of the viewer's own
    };

    void open(const QString& url, HelpContentsItem* item, const NamedBy& namedBy);
    void record(HelpContentsItem* item, bool hadPage);
    void announce();
    void step(std::vector<HelpContentsItem*>& from, std::vector<HelpContentsItem*>& to);
    [[nodiscard]] bool isCurrent(const QString& url, const HelpContentsItem* item) const;

    void display(const QString& url, const HelpContentsItem* item, const NamedBy& namedBy);
    void displayFile(const QString& url, const HelpContentsItem* item, const NamedBy& namedBy);
    void displayError(PageError error, const QString& url, const HelpContentsItem* item, const NamedBy& namedBy);
    void displayBuiltin(const BuiltinPage& page, std::vector<RecordLink> targets);
    void displayText(Shown shown, bool isHtml);
    [[nodiscard]] bool isShown(const QString& file) const;
    void scrollTo(const QString& anchor);
    void clearPage();

    void followLink(const QUrl& link);
    [[nodiscard]] QString linkTarget(const QUrl& link) const;
    [[nodiscard]] const RecordLink* recordLink(const QUrl& link) const;

    HelpLibrary& m_library;
    Shown m_shown;
    QString m_hint;
    bool m_stepping = false;                       ///< backward() or forward() is loading a page
    std::vector<HelpContentsItem*> m_backLinks;    ///< the most recent one is the last
    std::vector<HelpContentsItem*> m_forwardLinks; ///< the next page is the last
    HelpContentsItem* m_currentLink = nullptr;
    HelpContentsItem* m_homeLink = nullptr; ///< first page shown since the history was last forgotten
};
