// SPDX-License-Identifier: MIT
#include "library/missingpages.h"

#include "formats/regularfile.h"
#include "library/helplibrary.h"
#include "library/helpset.h"

#include <QCoreApplication>
#include <QHash>

namespace {

class MissingPages {
public:
    void check(const QString& page, const QString& file, int line)
    {
        const qsizetype hash = page.indexOf(u'#');
        const QString path = hash < 0 ? page : page.first(hash);
        auto known = m_exists.find(path);
        if (known == m_exists.end()) {
            known = m_exists.insert(path, isRegularFile(path));
        }
        if (!*known && !(hash >= 0 && isRegularFile(page))) {
            m_problems.push_back(
                {file, line, Problem::Severity::Warning,
                 QCoreApplication::translate("MissingPages", "The page \"%1\" does not exist").arg(page)});
        }
    }

    std::vector<Problem> take() { return std::move(m_problems); }

private:
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
                missing.check(record.page, *record.namedIn, record.namedInLine);
            }
        }
        for (const auto& item : set.indexItems()) {
            if (item.hasPage) {
                missing.check(item.link, *item.namedIn, item.namedInLine);
            }
        }
    }
    return missing.take();
}
