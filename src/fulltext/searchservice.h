// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/helpsetindex.h"
#include "fulltext/searchanswer.h"
#include "fulltext/searchsource.h"

#include <QHash>
#include <QObject>

#include <memory>

/// Full-text search in help sets. Indexing and searching happen in threads of its own, which destroying it
/// stops within a tenth of a second; what has been indexed so far is kept. Calls and signals belong to the
/// event loop and never wait.
class SearchService : public QObject {
    Q_OBJECT

public:
    explicit SearchService(QObject* parent = nullptr);
    ~SearchService() override;

    /// Lets a help set be searched; its index is made, or brought up to date, in the background. One that is
    /// known by its contents file is replaced.
    void addHelpSet(const SearchSource& source);
    /// Forgets a help set; its index stays on disk for the next time.
    void removeHelpSet(const QString& contentsFile);

    /// Leads to answered(). A request that is still under way is given up without an answer.
    void search(const SearchRequest& request);

    /// Gives up making indexes; what has been indexed can be searched.
    void cancelIndexing();
    [[nodiscard]] bool isIndexing() const;

Q_SIGNALS:
    /// Twice for one request when snippets take long; see SearchAnswer::isComplete.
    void answered(const SearchAnswer& answer);
    /// Pages looked at, of those that all help sets added since it was idle have; several times a second.
    void progressed(qint64 done, qint64 total);
    /// A help set's index is complete or was given up; it is worth searching again. `errors` are sentences
    /// for people, each with the name of a file.
    void indexed(const QString& contentsFile, const QStringList& errors);
    /// Nothing is left to be indexed.
    void becameIdle();

private:
    class Searching;
    class Indexing;
    void repair(const std::shared_ptr<const SearchSource>& source, IndexTrust trust);

    QHash<QString, std::shared_ptr<const SearchSource>> m_sources; ///< by contents files
    QHash<QString, IndexTrust> m_repaired; ///< by contents files, what it was because of
    std::unique_ptr<Searching> m_searching;
    std::unique_ptr<Indexing> m_indexing; ///< after the former, which it uses
};
