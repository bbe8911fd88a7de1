// SPDX-License-Identifier: MIT
#pragma once

#include "formats/problem.h"
#include "library/backgroundtasks.h"
#include "library/helpcontentsitem.h"
#include "library/helpcontentslistviewitem.h"
#include "library/keywordindex.h"
#include "library/pagerecords.h"

#include <QObject>
#include <QStringList>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

class HelpSet;

/// All that is loaded: the help sets with their records, the contents tree and the keyword index. Makes and
/// destroys every record; everyone else holds non-owning pointers and lets go of them at
/// helpSetAboutToBeRemoved().
class HelpLibrary : public QObject {
    Q_OBJECT

public:
    /// What loading one contents file led to.
    struct Loaded {
        HelpContentsRoot* root = nullptr;
        HelpContentsItem* firstPage = nullptr; ///< null when the file names no page
        QString title;                         ///< that the file itself names, else its name
        QStringList malformedFiles;            ///< files whose reading stopped at an over-deep entry
        bool readable = false;
        QString limitReached = {}; ///< a sentence on what was left out; null when all was read
    };
    /// The row behind whose help set a new one goes, asked for at the last moment.
    using CurrentRow = std::function<const HelpContentsListViewItem*()>;
    using ContentsLoaded = std::function<void(const Loaded&)>;

    explicit HelpLibrary(QObject* parent = nullptr);
    ~HelpLibrary() override;

    /// Loads a contents file, even one that is loaded already. Its top-level rows go behind the help set that
    /// `current` belongs to, without a current row before all others. The keyword rows are not rebuilt.
    Loaded loadContents(const QString& fileName, const HelpContentsListViewItem* current);
    /// Destroys the help set of this root record with the page records that belong to it, with the last help
    /// set all of them, and rebuilds the keyword rows.
    void removeContents(HelpContentsRoot* root);
    void buildIndex();

    /// Starts reading a contents file and its index files in the background, so that a readContents() that
    /// follows finds them read. Needs no application object.
    void readAhead(const QString& fileName);
    /// Does what loadContents() does, but reads in the background and calls `loaded` from the event loop. The
    /// index files follow; when nothing is left to read, the keyword rows are rebuilt.
    void readContents(const QString& fileName, const CurrentRow& current, const ContentsLoaded& loaded);
    /// While held, contents files are read, but not their index files: a window that is not there yet needs
    /// the processor itself.
    void setIndexHeld(bool isHeld) { m_indexReading.setHeld(isHeld); }
    /// Lets what readContents() has been asked for happen now, as far as it is done within the time.
    void adoptWithin(std::chrono::milliseconds time, const std::function<bool()>& isEnough);
    /// Gives up what is still to be read; the keyword rows are rebuilt.
    void cancelReading();
    /// The same without the keyword rows, for one who does not look at them any more.
    void dropReading();
    /// Whether files are being read or keyword rows are being made.
    [[nodiscard]] bool isBusy() const;

    /// The help sets in load order.
    [[nodiscard]] std::vector<HelpContentsRoot*> roots() const;
    /// Whether there is no record at all.
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] const HelpSet& helpSet(const HelpContentsRoot& root) const;
    /// Top-level rows of the contents tree.
    [[nodiscard]] const std::vector<HelpContentsListViewItem*>& topRows() const { return m_topRows; }
    [[nodiscard]] KeywordIndex& keywordIndex() { return m_keywordIndex; }
    [[nodiscard]] const KeywordIndex& keywordIndex() const { return m_keywordIndex; }
    [[nodiscard]] std::vector<Problem> problems() const;

    /// Record of the row that shows exactly this page; null when there is none.
    [[nodiscard]] HelpContentsItem* findPage(const QString& fileName) const;
    /// The row that shows the page, or the page without its anchor; null when there is none.
    [[nodiscard]] const HelpContentsListViewItem* findRow(const QString& fileName) const;
    /// Record of the row that shows the page; else a new page record, which takes row, title and root of the
    /// row that shows the page without its anchor. `namedIn` is the file, with its line, that names a page of
    /// which the contents know nothing.
    [[nodiscard]] HelpContentsItem* getPage(const QString& fileName, const QString& namedIn = {},
                                            int namedInLine = 0);
    /// The page record that stands for a keyword without a page.
    [[nodiscard]] HelpContentsItem* getPage(const HelpIndexItem& keyword)
    {
        return &m_pageRecords.of(keyword);
    }
    /// First record of the help set that was loaded under exactly this name; null when there is none.
    [[nodiscard]] HelpContentsItem* getContentsByFileName(const QString& fileName) const;
    /// What the contents call a page, with its anchor when only the whole page has a row; where none has, the
    /// file name with the anchor.
    [[nodiscard]] QString pageTitle(const QString& link) const;

    [[nodiscard]] bool isOpen(const QString& fileName) const;

    /// Whether a record goes when this help set is removed.
    [[nodiscard]] static bool belongsTo(const HelpContentsItem& item, const HelpContentsRoot& root)
    {
        return item.root() == &root ||
               (item.keyword != nullptr && item.keyword->source->contentsItem == &root);
    }
    [[nodiscard]] static bool isOneFile(const QString& a, const QString& b);
    [[nodiscard]] static QString absoluteName(const QString& fileName);
    /// Whether there may be a help set of this name, even one that cannot be read.
    [[nodiscard]] static bool isFile(const QString& fileName);
    /// What a name means that a user gives: a page means the help set that it belongs to.
    struct Place {
        QString helpSet;
        QString page; ///< absolute path of the page to begin with; null for the first one
    };
    [[nodiscard]] static Place placeOf(const QString& fileName);
    /// What people call a page in a package; anything else stays as it is.
    [[nodiscard]] static QString readableName(const QString& page);
    /// For a file dialog, one for each kind of documentation.
    [[nodiscard]] static QStringList fileFilters();
    /// Why a file cannot be opened.
    struct Refusal {
        QString reason; ///< a sentence part, such as "no such file"
        bool isGone;    ///< certainly no file; otherwise it may be there, or come back
    };
    /// None when it can be opened.
    [[nodiscard]] static std::optional<Refusal> refusalOf(const QString& fileName);
    /// The title that a contents file gives its help set, else the file name.
    [[nodiscard]] static QString getTitle(const QString& fileName);

Q_SIGNALS:
    /// Something is to be done in the background.
    void becameBusy();
    /// All that was to be done in the background has been done or given up.
    void becameIdle();
    /// Keywords of a contents file were left out; `reason` is a sentence.
    void keywordsLeftOut(const QString& fileName, const QString& reason);
    void topRowsAboutToBeInserted(int first, int last);
    void topRowsInserted();
    /// Rows that had provisional titles have others now.
    void rowsRetitled();
    void helpSetAboutToBeRemoved(HelpContentsRoot* root);
    void topRowsAboutToBeRemoved(int first, int last);
    void topRowsRemoved();
    void helpSetRemoved();

private:
    struct WholePage {
        const HelpContentsItem* record = nullptr;
        QString anchor;
    };

    struct Reading;

    [[nodiscard]] WholePage findWholePage(const QString& fileName) const;

    void proceed(const std::shared_ptr<Reading>& reading);
    /// What is not needed for the first page.
    void readRest(const std::shared_ptr<Reading>& reading);
    [[nodiscard]] bool isReading() const;
    Loaded adoptContents(const std::shared_ptr<HelpSet>& set, const HelpContentsListViewItem* current);
    /// The rows are made at once when there are few, else in the background; until then there are none.
    void renewIndex();
    [[nodiscard]] std::vector<std::span<HelpIndexItem>> indexItems() const;
    [[nodiscard]] size_t insertPosition(const HelpContentsListViewItem* current) const;
    void numberTopRows(size_t first);

    std::vector<std::shared_ptr<HelpSet>> m_helpSets; ///< in load order; shared with running tasks
    std::vector<HelpContentsListViewItem*> m_topRows;
    PageRecords m_pageRecords;
    KeywordIndex m_keywordIndex;
    std::vector<std::shared_ptr<Reading>> m_readings;
    BackgroundTasks m_reading{BackgroundTasks::Priority::Normal}; ///< of contents files
    BackgroundTasks m_indexReading{BackgroundTasks::Priority::Low};
    BackgroundTasks m_indexing{
        BackgroundTasks::Priority::Low}; ///< makes keyword rows; looks at the help sets
};
