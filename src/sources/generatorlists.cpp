// SPDX-License-Identifier: MIT
#include "sources/generatorlists.h"

#include "sources/inflate.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>

#include <algorithm>
#include <array>

namespace {

constexpr qint64 LargestList = 64'000'000; // bytes
constexpr size_t MostKeywords = 2'000'000;
constexpr size_t MostRows = 200'000;

QString unescaped(QString text)
{
    static const std::array<std::pair<QString, QString>, 6> names{
        std::pair{QStringLiteral("&lt;"), QStringLiteral("<")},
        std::pair{QStringLiteral("&gt;"), QStringLiteral(">")},
        std::pair{QStringLiteral("&quot;"), QStringLiteral("\"")},
        std::pair{QStringLiteral("&#39;"), QStringLiteral("'")},
        std::pair{QStringLiteral("&#160;"), QStringLiteral(" ")},
        std::pair{QStringLiteral("&amp;"), QStringLiteral("&")}};
    if (text.contains(u'&')) {
        for (const auto& [name, character] : names) {
            text.replace(name, character);
        }
    }
    return text.simplified();
}

/// Adds a string of a script as one of JSON; returns the position behind its end.
qsizetype addString(QByteArray& json, QByteArrayView script, qsizetype at)
{
    const char quote = script[at];
    json += '"';
    for (++at; at < script.size() && script[at] != quote; ++at) {
        if (script[at] == '\\' && at + 1 < script.size()) {
            const char next = script[++at];
            json += next == '\'' ? "" : "\\";
            json += next;
        } else {
            json += script[at] == '"' ? "\\" : "";
            json += script[at];
        }
    }
    json += '"';
    return at + 1;
}

/// A literal of a script, up to its end, as JSON.
QByteArray asJson(QByteArrayView script)
{
    QByteArray json;
    json.reserve(script.size());
    int open = 0;
    for (qsizetype i = 0; i < script.size();) {
        const char c = script[i];
        if (c == '"' || c == '\'') {
            i = addString(json, script, i);
            continue;
        }
        json += c;
        ++i;
        open += c == '[' || c == '{' ? 1 : 0;
        open -= c == ']' || c == '}' ? 1 : 0;
        if (open == 0) {
            return json;
        }
    }
    return {};
}

/// One branch of Doxygen's navigation after the other.
class DoxygenTree {
public:
    DoxygenTree(const FolderFiles& files, const QString& list) : m_files(files), m_folder(folderOf(list)) {}

    /// `use` gets the level, the title and the page of each node and returns whether to go on.
    template <typename Use>
    void visit(Use use)
    {
        const auto document =
            scriptData(m_files.bytes(m_folder + QStringLiteral("navtreedata.js"), LargestList), "NAVTREE");
        std::vector<std::pair<QJsonArray, int>> waiting{{document.array(), 0}};
        std::vector<qsizetype> next{0};
        while (!waiting.empty()) {
            auto& [nodes, level] = waiting.back();
            if (next.back() >= nodes.size()) {
                waiting.pop_back();
                next.pop_back();
                continue;
            }
            const auto node = nodes.at(next.back()++).toArray();
            const int depth = level;
            const QString link = node.at(1).toString();
            if (!use(depth, unescaped(node.at(0).toString()),
                     link.isEmpty() ? std::nullopt : m_files.resolve(m_folder + QStringLiteral("x"), link))) {
                return;
            }
            constexpr size_t deepest = 40;
            if (waiting.size() < deepest) {
                waiting.emplace_back(children(node.at(2)), depth + 1);
                next.push_back(0);
            }
        }
    }

private:
    /// They stand in the node, or in a file of their own.
    QJsonArray children(const QJsonValue& value)
    {
        const QString name = value.toString();
        if (name.isEmpty() || name.contains(u'/') || m_read.contains(name)) {
            return value.toArray();
        }
        m_read.insert(name);
        return scriptData(m_files.bytes(m_folder + name + QStringLiteral(".js"), LargestList), name.toUtf8())
            .array();
    }

    const FolderFiles& m_files;
    QString m_folder;
    QSet<QString> m_read;
};

struct JavaType {
    QString package;
    QString name;
};

class Javadoc {
public:
    Javadoc(const FolderFiles& files, const QString& typeList) : m_files(files), m_folder(folderOf(typeList))
    {
        for (const auto& value : list("package-search-index.js", "packageSearchIndex")) {
            const auto entry = value.toObject();
            m_modules.insert(entry[QLatin1StringView("l")].toString(),
                             entry[QLatin1StringView("m")].toString());
        }
    }

    [[nodiscard]] QJsonArray list(const char* file, const char* mark) const
    {
        return scriptData(m_files.bytes(m_folder + QLatin1StringView(file), LargestList), mark).array();
    }

    /// Of a type, or of a package for an empty name; none when there is no such page.
    [[nodiscard]] std::optional<QString> page(const QString& package, const QString& type) const
    {
        const QString module = m_modules.value(package);
        const QString path =
            (module.isEmpty() ? QString() : module + u'/') + QString(package).replace(u'.', u'/') + u'/' +
            (type.isEmpty() ? QStringLiteral("package-summary") : type) + QStringLiteral(".html");
        const QString name = m_folder + path;
        return m_files.isPage(name) ? std::optional(name) : std::nullopt;
    }

private:
    const FolderFiles& m_files;
    QString m_folder;
    QHash<QString, QString> m_modules; ///< by their packages
};

} // namespace

QJsonDocument scriptData(const QByteArray& script, QByteArrayView mark)
{
    const qsizetype named = mark.isEmpty() ? 0 : script.indexOf(mark);
    const qsizetype equals = named < 0 ? -1 : script.indexOf('=', named);
    if (equals < 0) {
        return {};
    }
    const qsizetype array = script.indexOf('[', equals);
    const qsizetype object = script.indexOf('{', equals);
    const qsizetype begin = array < 0 || (object >= 0 && object < array) ? object : array;
    return begin < 0 ? QJsonDocument()
                     : QJsonDocument::fromJson(asJson(QByteArrayView(script).sliced(begin)));
}

void addInventory(const FolderFiles& files, const QString& list, std::vector<FolderKeyword>& keywords)
{
    const QByteArray bytes = files.bytes(list, LargestList);
    qsizetype begin = 0;
    for (int line = 0; line < 4 && begin >= 0; ++line) {
        begin = bytes.indexOf('\n', begin) + 1;
        if (begin == 0) {
            return;
        }
    }
    const auto text = inflated(QByteArrayView(bytes).sliced(begin), Compression::Zlib, LargestList, true);
    const QString folder = folderOf(list);
    const auto lines = QString::fromUtf8(text.value_or(QByteArray()));
    for (const QStringView line : QStringView(lines).tokenize(u'\n')) {
        // name domain:role priority place title; names may have blanks in them
        const qsizetype roleEnd = line.indexOf(u':');
        const qsizetype nameEnd = roleEnd < 0 ? -1 : line.lastIndexOf(u' ', roleEnd);
        const auto rest = nameEnd <= 0 ? QList<QStringView>() : line.sliced(nameEnd + 1).split(u' ');
        if (rest.size() < 4 || rest[0] == u"std:doc" || rest[0] == u"std:label" ||
            keywords.size() >= MostKeywords) {
            continue;
        }
        const QStringView name = line.first(nameEnd);
        QString place = rest[2].toString();
        if (place.endsWith(u'$')) {
            place = place.chopped(1) + name;
        }
        if (const auto page = files.resolve(folder + QStringLiteral("x"), place)) {
            keywords.push_back({name.toString(), *page, -1});
        }
    }
}

std::vector<FolderRow> doxygenRows(const FolderFiles& files, const QString& list)
{
    std::vector<FolderRow> rows;
    int skippedBelow = -1; ///< level of a page whose members are left out
    DoxygenTree(files, list).visit([&](int level, const QString& title, const std::optional<QString>& page) {
        if (skippedBelow >= 0 && level > skippedBelow) {
            return true;
        }
        skippedBelow = -1;
        // Members are places in a page, and belong into the index.
        const bool isMember = level > 1 && page && page->contains(u'#');
        if (isMember || (level > 0 && title.isEmpty())) {
            skippedBelow = level;
        } else {
            rows.push_back({level, title, page.value_or(QString())});
        }
        return rows.size() < MostRows;
    });
    return rows;
}

void addDoxygenKeywords(const FolderFiles& files, const QString& list, std::vector<FolderKeyword>& keywords)
{
    QSet<std::pair<QString, QString>> known;
    DoxygenTree(files, list).visit([&](int level, const QString& title, const std::optional<QString>& page) {
        if (level > 1 && page && !title.isEmpty() && !known.contains({title, *page})) {
            known.insert({title, *page});
            keywords.push_back({title, *page, -1});
        }
        return keywords.size() < MostKeywords;
    });
    const QString folder = folderOf(list);
    const QDir search(files.root() + folder + QStringLiteral("search"));
    for (const auto& name : search.entryList({QStringLiteral("all_*.js")}, QDir::Files, QDir::Name)) {
        const QString script = folder + QStringLiteral("search/") + name;
        const auto document = scriptData(files.bytes(script, LargestList), "searchData");
        for (const auto& value : document.array()) {
            const auto found = value.toArray().at(1).toArray();
            const QString keyword = unescaped(found.at(0).toString());
            for (qsizetype i = 1; i < found.size() && keywords.size() < MostKeywords; ++i) {
                const auto page = files.resolve(script, found.at(i).toArray().at(0).toString());
                if (page && !known.contains({keyword, *page})) {
                    known.insert({keyword, *page});
                    keywords.push_back({keyword, *page, -1});
                }
            }
        }
    }
}

std::vector<FolderRow> javadocRows(const FolderFiles& files, const QString& typeList)
{
    const Javadoc javadoc(files, typeList);
    QMap<QString, std::vector<FolderRow>> packages;
    for (const auto& value : javadoc.list("type-search-index.js", "typeSearchIndex")) {
        const auto entry = value.toObject();
        const QString package = entry[QLatin1StringView("p")].toString();
        const QString name = entry[QLatin1StringView("l")].toString();
        if (const auto page = javadoc.page(package, name); page && !package.isEmpty()) {
            packages[package].push_back({1, name, *page});
        }
    }
    std::vector<FolderRow> rows;
    for (auto package = packages.begin(); package != packages.end() && rows.size() < MostRows; ++package) {
        rows.push_back({0, package.key(), javadoc.page(package.key(), {}).value_or(QString())});
        rows.insert(rows.end(), package->begin(), package->end());
    }
    return rows;
}

void addJavadocKeywords(const FolderFiles& files, const QString& typeList,
                        std::vector<FolderKeyword>& keywords)
{
    const Javadoc javadoc(files, typeList);
    for (const auto& value : javadoc.list("type-search-index.js", "typeSearchIndex")) {
        const auto entry = value.toObject();
        const QString name = entry[QLatin1StringView("l")].toString();
        if (const auto page = javadoc.page(entry[QLatin1StringView("p")].toString(), name)) {
            keywords.push_back({name, *page, -1});
        }
    }
    for (const auto& value : javadoc.list("member-search-index.js", "memberSearchIndex")) {
        const auto entry = value.toObject();
        const QString name = entry[QLatin1StringView("l")].toString();
        const QString type = entry[QLatin1StringView("c")].toString();
        const QString anchor = entry[QLatin1StringView("u")].toString();
        const auto page = javadoc.page(entry[QLatin1StringView("p")].toString(), type);
        if (page && !name.isEmpty() && keywords.size() < MostKeywords) {
            keywords.push_back({name + QStringLiteral(" (") + type + u')',
                                *page + u'#' + (anchor.isEmpty() ? name : anchor), -1});
        }
    }
}

void addMkDocsKeywords(const FolderFiles& files, const QString& list, std::vector<FolderKeyword>& keywords)
{
    // The list stands in a folder of its own.
    const QString script = folderOf(folderOf(list).chopped(1)) + QStringLiteral("x");
    const auto document = QJsonDocument::fromJson(files.bytes(list, LargestList));
    for (const auto& value : document.object()[QLatin1StringView("docs")].toArray()) {
        const auto entry = value.toObject();
        const QString title = unescaped(entry[QLatin1StringView("title")].toString());
        QString place = entry[QLatin1StringView("location")].toString();
        place = place.isEmpty() ? QStringLiteral("index.html") : place;
        const auto page = files.resolve(script, place);
        if (page && !title.isEmpty() && keywords.size() < MostKeywords) {
            keywords.push_back({title, *page, -1});
        }
    }
}
