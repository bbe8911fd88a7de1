// SPDX-License-Identifier: MIT
#include "app/dump.h"

#include "app/arguments.h"
#include "app/jsonwriter.h"
#include "library/helplibrary.h"
#include "library/helpset.h"
#include "library/missingpages.h"

#include <QCoreApplication>

namespace {

QString nonNull(const QString& text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

class Dump {
    Q_DECLARE_TR_FUNCTIONS(Dump)

public:
    bool load(const QStringList& fileNames)
    {
        bool complete = true;
        for (const auto& fileName : fileNames) {
            if (!HelpLibrary::isFile(fileName)) {
                m_problems.push_back({fileName, 0, Problem::Severity::Error, whyNot(fileName)});
                complete = false;
                continue;
            }
            // The viewer goes to the first row after each file, so that is the current one when the next is
            // loaded.
            const auto& rows = m_library.topRows();
            complete &= m_library
                            .loadContents(HelpLibrary::placeOf(fileName).helpSet,
                                          rows.empty() ? nullptr : rows.front())
                            .readable;
        }
        m_library.buildIndex();
        const auto read = m_library.problems();
        const auto missingPages = findMissingPages(m_library);
        m_problems.insert(m_problems.end(), read.begin(), read.end());
        m_problems.insert(m_problems.end(), missingPages.begin(), missingPages.end());
        return complete;
    }

    [[nodiscard]] bool write()
    {
        m_json.beginObject();
        m_json.key("files");
        writeFiles();
        m_json.key("contents");
        writeContents();
        m_json.key("index");
        writeIndex();
        m_json.key("problems");
        writeProblems();
        m_json.end();
        return m_json.finish();
    }

private:
    static QString whyNot(const QString& fileName)
    {
        const auto refusal = HelpLibrary::refusalOf(fileName);
        return tr("Cannot be opened: %1").arg(refusal ? refusal->reason : QString());
    }

    void member(const char* name, const QString& text)
    {
        m_json.key(name);
        m_json.value(text);
    }

    void writeFiles()
    {
        m_json.beginArray();
        for (const auto* root : m_library.roots()) {
            const auto* first = m_library.helpSet(*root).firstPage();
            m_json.beginObject();
            member("file", root->fileName);
            member("title", root->title());
            member("firstPage", first == nullptr ? QString() : first->page());
            m_json.end();
        }
        m_json.end();
    }

    void beginRow(const HelpContentsListViewItem& row)
    {
        m_json.beginObject();
        member("title", nonNull(row.text.toString()));
        member("page", nonNull(row.contentsItem->page()));
        member("helpset", row.contentsItem->title());
        m_json.key("children");
        m_json.beginArray();
    }

    void endRow()
    {
        m_json.end();
        m_json.end();
    }

    // Without recursion: outlines may be thousands of levels deep.
    void writeContents()
    {
        m_json.beginArray();
        for (const auto* top : m_library.topRows()) {
            std::vector<std::pair<const HelpContentsListViewItem*, size_t>> path{{top, 0}};
            beginRow(*top);
            while (!path.empty()) {
                auto& [row, next] = path.back();
                if (next < row->children.size()) {
                    const auto* child = row->children[next++];
                    beginRow(*child);
                    path.emplace_back(child, 0);
                } else {
                    endRow();
                    path.pop_back();
                }
            }
        }
        m_json.end();
    }

    void writeIndex()
    {
        const auto& index = m_library.keywordIndex();
        m_json.beginArray();
        for (const auto& row : index.rows()) {
            m_json.beginObject();
            member("text", nonNull(row.text()));
            member("link", row.indexItem->link());
            m_json.key("topics");
            m_json.beginArray();
            for (const auto* topic : index.topics(row.indexItem)) {
                m_json.beginObject();
                member("title", topic->title());
                member("link", topic->link());
                m_json.end();
            }
            m_json.end();
            m_json.end();
        }
        m_json.end();
    }

    void writeProblems()
    {
        m_json.beginArray();
        for (const auto& problem : m_problems) {
            m_json.beginObject();
            member("file", problem.file);
            m_json.key("line");
            m_json.value(problem.line);
            member("severity", problem.severity == Problem::Severity::Error ? QStringLiteral("error")
                                                                            : QStringLiteral("warning"));
            member("message", problem.message);
            m_json.end();
        }
        m_json.end();
    }

    HelpLibrary m_library;
    std::vector<Problem> m_problems;
    JsonWriter m_json{stdout};
};

} // namespace

std::optional<int> dumpHelpSets(int argc, char* argv[])
{
    if (argc < 3) {
        return std::nullopt;
    }
    Dump dump;
    const bool complete = dump.load(absoluteFileNameArguments(argc, argv));
    if (!dump.write()) {
        complain(QCoreApplication::translate("Dump", "standard output cannot be written"));
        return 1;
    }
    return complete ? 0 : 1;
}
