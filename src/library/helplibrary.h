// SPDX-License-Identifier: MIT
#pragma once

#include "formats/problem.h"
#include "library/helpcontentsitem.h"
#include "library/helpcontentslistviewitem.h"
#include "library/keywordindex.h"

#include <QObject>
#include <QStringList>

#include <deque>
#include <memory>
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
        HelpContentsItem* root = nullptr;
        HelpContentsItem* firstPage = nullptr; ///< null when the file names no page
        QStringList malformedFiles;            ///< files whose reading stopped at an over-deep entry
        bool readable = false;
    };

    explicit HelpLibrary(QObject* parent = nullptr);
    ~HelpLibrary() override;

    /// Loads a contents file, even one that is loaded already. Its top-level rows go behind the help set that
    /// `current` belongs to, without a current row before all others. The keyword rows are not rebuilt.
    Loaded loadContents(const QString& fileName, const HelpContentsListViewItem* current);
    /// Destroys the help set of this root record, all page records, and rebuilds the keyword rows.
    void removeContents(HelpContentsItem* root);
    void buildIndex();

    /// The help sets in load order.
    [[nodiscard]] std::vector<HelpContentsItem*> roots() const;
    /// Whether there is no record at all.
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] const HelpSet& helpSet(const HelpContentsItem& root) const;
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
    /// row that shows the page without its anchor.
    [[nodiscard]] HelpContentsItem* getPage(const QString& fileName);
    /// The page record that stands for a keyword without a page.
    [[nodiscard]] HelpContentsItem* getPage(const HelpIndexItem& keyword);
    /// First record of the help set that was loaded under exactly this name; null when there is none.
    [[nodiscard]] HelpContentsItem* getContentsByFileName(const QString& fileName) const;
    /// What the contents call a page, with its anchor when only the whole page has a row; where none has, the
    /// file name with the anchor.
    [[nodiscard]] QString pageTitle(const QString& link) const;

    [[nodiscard]] static bool isOneFile(const QString& a, const QString& b);
    [[nodiscard]] static QString absoluteName(const QString& fileName);
    /// Whether a regular file of this name exists.
    [[nodiscard]] static bool isFile(const QString& fileName);
    /// The title that a contents file gives its help set, else the file name.
    [[nodiscard]] static QString getTitle(const QString& fileName);

Q_SIGNALS:
    void topRowsAboutToBeInserted(int first, int last);
    void topRowsInserted();
    void helpSetAboutToBeRemoved(HelpContentsItem* root);
    void topRowsAboutToBeRemoved(int first, int last);
    void topRowsRemoved();
    void helpSetRemoved();

private:
    struct WholePage {
        const HelpContentsItem* record = nullptr;
        QString anchor;
    };

    [[nodiscard]] WholePage findWholePage(const QString& fileName) const;
    [[nodiscard]] size_t insertPosition(const HelpContentsListViewItem* current) const;
    void numberTopRows(size_t first);

    std::vector<std::unique_ptr<HelpSet>> m_helpSets; ///< in load order
    std::vector<HelpContentsListViewItem*> m_topRows;
    std::deque<HelpContentsItem> m_pageRecords;
    KeywordIndex m_keywordIndex;
};
