// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

/// What the search needs to know of a help set: a value that any thread can use and that needs neither the
/// help set nor its records. All texts stand in one, so that a million topics are collected in no time.
class SearchSource {
public:
    static constexpr qsizetype MostFolders = 1000;

    /// `contentsFile` is the absolute path of the contents file, which stands for the help set.
    SearchSource(const QString& contentsFile, const QString& title)
        : m_contentsFile(contentsFile), m_title(title)
    {
    }

    /// Makes room; `text` is the number of UTF-16 code units.
    void reserve(size_t topics, size_t keywords, qsizetype text);
    /// Adds the next entry of the contents in their order. `level` counts from 0; the entry stands below the
    /// last one of a smaller level. The page, a directory followed by a name, may have an anchor; both are
    /// empty for a book without a page.
    void addTopic(QStringView directory, QStringView name, QStringView title, int level);
    /// Adds a keyword of the index and the page that it leads to.
    void addKeyword(QStringView directory, QStringView name, QStringView keyword);

    [[nodiscard]] const QString& contentsFile() const { return m_contentsFile; }
    [[nodiscard]] const QString& title() const { return m_title; }

    /// A topic or a keyword.
    struct Entry {
        qsizetype begin; ///< in the text: the page, behind it the title
        int pageLength;
        int titleLength;
        int level; ///< of topics only
    };
    /// The folders that its pages are named from; each ends with "/".
    [[nodiscard]] const QStringList& folders() const { return m_folders; }
    [[nodiscard]] const std::vector<Entry>& topics() const { return m_topics; }
    [[nodiscard]] const std::vector<Entry>& keywords() const { return m_keywords; }
    [[nodiscard]] QStringView page(const Entry& entry) const
    {
        return QStringView(m_text).sliced(entry.begin, entry.pageLength);
    }
    [[nodiscard]] QStringView title(const Entry& entry) const
    {
        return QStringView(m_text).sliced(entry.begin + entry.pageLength, entry.titleLength);
    }

private:
    [[nodiscard]] Entry add(QStringView directory, QStringView name, QStringView title, int level);

    QString m_contentsFile;
    QString m_title;
    QString m_text;
    QStringList m_folders;
    std::vector<Entry> m_topics;
    std::vector<Entry> m_keywords;
};
