// SPDX-License-Identifier: MIT
#pragma once

#include "browser/pagehistory.h"
#include "browser/pageview.h"
#include "browser/recordpage.h"

#include <vector>

class HelpLibrary;
class ImageWindow;
struct HelpContentsItem;
struct HelpContentsRoot;
struct HelpIndexItem;

/// The page view: loads pages by its own rules (link policy, pages that say why there is none to show), keeps
/// a history of records and tells which navigation commands make sense. The library must outlive it.
class HelpBrowser : public PageView {
    Q_OBJECT

public:
    HelpBrowser(HelpLibrary& library, QWidget* parent);
    ~HelpBrowser() override;

    /// Record of the page shown; null when none.
    [[nodiscard]] HelpContentsItem* getCurrentLink() const { return m_history.current(); }
    /// The pages that were read before, each once, those read last first.
    [[nodiscard]] std::vector<HelpContentsItem*> readLately() const { return m_history.left(); }

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
    /// Reads the page shown again, if only because its pictures have changed, and keeps the place.
    void reloadPage();
    /// The pages shown from now on take the place of each other in the history, until this is off again.
    void setPassing(bool isPassing) { m_isPassing = isPassing; }

    /// Lets go of all that comes from a help set which is about to be removed.
    void forget(const HelpContentsRoot& root);
    /// After forget(): when the page shown has gone, shows what was read before it, else no page.
    void recover();
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
    /// A help set is to be opened, and this page of it shown.
    void helpSetRequested(const QString& fileName, const QString& page);
    /// Another record is the one of the page shown.
    void currentChanged(HelpContentsItem* record);

protected:
    [[nodiscard]] QString linkTarget(const QString& href) const override;

private:
    void open(const QString& url, HelpContentsItem* item, const NamedBy& namedBy);
    void record(HelpContentsItem* item, int leftPlace);
    void announce();
    void step(PageHistory::Direction direction);
    void revisit(const PageHistory::Visit& visit);
    void findCurrentAgain(const QString& url);
    [[nodiscard]] bool isCurrent(const QString& url, const HelpContentsItem* item) const;

    void display(const QString& url, const HelpContentsItem* item, const NamedBy& namedBy);
    void displayFile(const QString& url, const HelpContentsItem* item, const NamedBy& namedBy);
    [[nodiscard]] bool passOn(const HelpContentsItem* item, const NamedBy& namedBy);
    void displayError(PageError error, const QString& url, const HelpContentsItem* item,
                      const NamedBy& namedBy);
    void displayBuiltin(const BuiltinPage& page, std::vector<RecordLink> targets);
    void showPicture(const QString& file);
    void followLink(const QString& href);
    [[nodiscard]] const RecordLink* recordLink(const QString& href) const;

    HelpLibrary& m_library;
    std::vector<RecordLink> m_targets; ///< of the links of a page of the viewer's own
    bool m_stepping = false;           ///< a page of the history is loading
    bool m_isPassing = false;
    bool m_isLost = false;    ///< the record of the page on the screen has gone
    bool m_passingOn = false; ///< a page that another one passes its readers on to is loading
    PageHistory m_history;
    QList<ImageWindow*> m_pictures; ///< open windows
};
