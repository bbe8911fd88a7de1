// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>
#include <stop_token>
#include <vector>

/// A row of a folder's contents. Pages are relative to the folder, anchors included.
struct FolderRow {
    int level = 0;
    QString title;
    QString page;            ///< empty for none
    bool isUntitled = false; ///< called by its file until its page has been read
};

struct FolderKeyword {
    QString keyword;
    QString page;
    int parent = -1; ///< position of the keyword that it stands under; -1 for none
};

/// The pages of a folder of HTML, and what their generator left beside them. Names are relative to the
/// folder.
class FolderFiles {
public:
    static constexpr int MaximumFiles = 200'000; ///< that are looked at
    static constexpr int DeepestFolder = 12;

    /// Folders that are links are followed once. `root` ends with "/".
    FolderFiles(const QString& root, const std::stop_token& stop);

    [[nodiscard]] const QString& root() const { return m_root; }
    /// In the order of their names, those of a folder before those of its folders.
    [[nodiscard]] const QStringList& pages() const { return m_pages; }
    [[nodiscard]] bool isPage(const QString& name) const { return m_known.contains(name); }
    /// Other files of a generator, by their names without the folder.
    [[nodiscard]] QStringList lists(const QString& name) const { return m_lists.value(name); }
    [[nodiscard]] bool isLimited() const { return m_isLimited; }

    /// The page, with its anchor, that a link of a page leads to; none when that is no page of the folder.
    [[nodiscard]] std::optional<QString> resolve(const QString& page, QStringView link) const;
    /// Empty when the file cannot be read.
    [[nodiscard]] QByteArray bytes(const QString& name, qint64 most = LargestPage) const;
    /// What a page calls itself, else its name.
    [[nodiscard]] QString title(const QString& page) const;

private:
    static constexpr qint64 LargestPage = 16'000'000; // bytes

    void walk(const std::stop_token& stop);
    void addFile(const QString& folder, const QString& fileName);

    QString m_root;
    QStringList m_pages;
    QSet<QString> m_known;
    QHash<QString, QStringList> m_lists;
    bool m_isLimited = false;
};

[[nodiscard]] inline QString withoutAnchor(const QString& page)
{
    return page.section(u'#', 0, 0);
}

/// What a page of HTML calls itself; empty when it does not, or cannot be read.
[[nodiscard]] QString htmlTitle(const QString& path);

/// With "/" at its end; empty for none.
[[nodiscard]] inline QString folderOf(const QString& page)
{
    return page.first(page.lastIndexOf(u'/') + 1);
}
