// SPDX-License-Identifier: MIT
#include "library/missingpages.h"

#include "formats/pagelocation.h"
#include "formats/paths.h"
#include "library/helplibrary.h"
#include "library/helpset.h"
#include "sources/pagefiles.h"

#include <QCoreApplication>
#include <QHash>

namespace {

class MissingPages {
public:
    void check(const QString& page, const QString& file, int line)
    {
        if (!exists(page)) {
            m_problems.push_back(
                {file, line, Problem::Severity::Warning,
                 QCoreApplication::translate("MissingPages", "The page \"%1\" does not exist").arg(page)});
        }
    }

    std::vector<Problem> take() { return std::move(m_problems); }

private:
    bool exists(const QString& page)
    {
        return splitPageName(page, [this](const QString& file) { return isPage(file); }).has_value();
    }

    /// A directory with an index.html counts, as the viewer shows that file.
    bool isPage(const QString& path)
    {
        const auto known = m_exists.constFind(path);
        if (known != m_exists.cend()) {
            return *known;
        }
        const bool found = isPageFile(path) || isPageFile(getRightDir(path) + QStringLiteral("index.html"));
        m_exists.insert(path, found);
        return found;
    }

    QHash<QString, bool> m_exists;
    std::vector<Problem> m_problems;
};

} // namespace

std::vector<Problem> findMissingPages(const HelpLibrary& library)
{
    MissingPages missing;
    for (const auto* root : library.roots()) {
        const auto& set = library.helpSet(*root);
        for (const auto& record : set.records()) {
            if (record.target == EntryTarget::Page) {
                missing.check(record.page(), record.source->fileName, record.namedInLine);
            }
        }
        // An index file may be named by many contents files.
        QHash<QString, const HelpIndexSource*> firstSources;
        for (const auto& item : set.indexItems()) {
            auto& first = firstSources[item.source->fileName];
            first = first == nullptr ? item.source : first;
            if (item.hasPage() && item.source == first) {
                missing.check(item.link(), item.source->fileName, item.namedInLine);
            }
        }
    }
    return missing.take();
}
