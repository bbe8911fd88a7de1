// SPDX-License-Identifier: MIT
#include "sources/sources.h"

#include "formats/helpsettitle.h"
#include "formats/paths.h"
#include "sources/devhelpsource.h"
#include "sources/folderfiles.h"
#include "sources/htmlfoldersource.h"
#include "sources/htmlplace.h"
#include "sources/nativesource.h"
#include "sources/outlinebuilder.h"
#include "sources/pagefiles.h"
#include "sources/qchsource.h"
#include "sources/registereddocument.h"
#include "sources/registeredsource.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>
#include <array>

namespace {

/// A file or folder of which the kind is to be found.
class Candidate {
public:
    explicit Candidate(const QString& path) : m_path(path) {}

    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] bool endsWith(QStringView suffix) const
    {
        return m_path.endsWith(suffix, Qt::CaseInsensitive);
    }
    [[nodiscard]] bool isFolder() const { return QFileInfo(fileSystemName(m_path)).isDir(); }
    /// The beginning of the file; read when it is asked for.
    [[nodiscard]] const QByteArray& head() const
    {
        constexpr qint64 size = 1024; // bytes
        if (!m_head) {
            const auto read = readRegularFile(m_path, size);
            m_head = read.ok() ? read.value() : QByteArray();
        }
        return *m_head;
    }
    [[nodiscard]] bool begins(const char* text) const { return head().trimmed().toLower().startsWith(text); }

private:
    QString m_path;
    mutable std::optional<QByteArray> m_head;
};

bool isNative(const Candidate& candidate)
{
    return candidate.endsWith(u".cnt");
}

bool isDevhelp(const Candidate& candidate)
{
    static constexpr std::array<QStringView, 4> suffixes{u".devhelp2", u".devhelp2.gz", u".devhelp",
                                                         u".devhelp.gz"};
    return std::any_of(suffixes.begin(), suffixes.end(),
                       [&](QStringView suffix) { return candidate.endsWith(suffix); }) ||
           ((candidate.begins("<?xml") || candidate.begins("<book")) && candidate.head().contains("<book") &&
            !candidate.head().contains("<!DOCTYPE"));
}

bool isQch(const Candidate& candidate)
{
    return candidate.endsWith(u".qch") || candidate.head().startsWith("SQLite format 3");
}

bool isHtml(const Candidate& candidate)
{
    return candidate.isFolder() || isHtmlName(candidate.path()) || candidate.begins("<!doctype html") ||
           candidate.begins("<html");
}

bool isRegistered(const Candidate& candidate)
{
    return candidate.head().startsWith("Document:");
}

template <typename Kind>
std::unique_ptr<Source> open(const QString& fileName)
{
    return std::make_unique<Kind>(fileName);
}

QString noFolder(const QString& /*fileName*/)
{
    return {};
}

QString itself(const QString& fileName)
{
    return absoluteFilePath(fileName);
}

template <typename Kind>
int namedPages(const QString& fileName, const std::stop_token& stop)
{
    const auto outline = Kind(fileName).readContents(stop);
    QSet<QStringView> pages;
    for (const auto& entry : outline.entries) {
        if (entry.target == EntryTarget::Page) {
            const qsizetype hash = entry.page.indexOf(u'#');
            pages.insert(hash < 0 ? entry.page : entry.page.first(hash));
        }
    }
    return int(pages.size());
}

int filesIn(const QString& folder, const std::stop_token& stop)
{
    return int(FolderFiles(getRightDir(folder), stop).pages().size());
}

struct SourceKind {
    const char* name;
    const char* patterns; ///< of file names; empty for none
    bool (*accepts)(const Candidate& candidate);
    std::unique_ptr<Source> (*open)(const QString& fileName);
    QString (*title)(const QString& fileName); ///< may be empty
    int (*pages)(const QString& fileName, const std::stop_token& stop);
    QString (*folder)(const QString& fileName) = noFolder; ///< with the pages
    std::unique_ptr<Package> (*openPackage)(const QString& fileName) = nullptr;
};

/// Files are asked for in this order. What is none of these is taken for a contents file.
const std::array kinds{
    SourceKind{QT_TRANSLATE_NOOP("Sources", "Contents File"), "*.cnt", isNative, open<NativeSource>, getTitle,
               namedPages<NativeSource>},
    SourceKind{QT_TRANSLATE_NOOP("Sources", "Qt Help"), "*.qch", isQch, open<QchSource>, QchSource::title,
               [](const QString& fileName, const std::stop_token&) { return QchFile(fileName).pageCount(); },
               noFolder,
               [](const QString& fileName) -> std::unique_ptr<Package> {
                   auto file = std::make_unique<QchFile>(fileName);
                   return file->problem().isNull() ? std::move(file) : nullptr;
               }},
    SourceKind{QT_TRANSLATE_NOOP("Sources", "Devhelp Book"),
               "*.devhelp2 *.devhelp2.gz *.devhelp *.devhelp.gz", isDevhelp, open<DevhelpSource>,
               DevhelpSource::title,
               [](const QString& fileName, const std::stop_token& stop) {
                   return filesIn(DevhelpSource::folder(fileName), stop);
               },
               DevhelpSource::folder},
    SourceKind{QT_TRANSLATE_NOOP("Sources", "HTML"), "*.html *.htm *.xhtml", isHtml, open<HtmlFolderSource>,
               HtmlFolderSource::title, filesIn, itself},
    SourceKind{QT_TRANSLATE_NOOP("Sources", "Registered Document"), "", isRegistered, open<RegisteredSource>,
               RegisteredSource::title, namedPages<RegisteredSource>},
};

const SourceKind& kindOf(const Candidate& candidate)
{
    const auto* found =
        std::find_if(kinds.begin(), kinds.end(), [&](const auto& kind) { return kind.accepts(candidate); });
    return found == kinds.end() ? kinds.front() : *found;
}

/// A file that no contents file is.
bool isForeign(const Candidate& candidate)
{
    const auto& kind = kindOf(candidate);
    return &kind == kinds.data() && !isNative(candidate) &&
           (candidate.head().contains('\0') || candidate.head().startsWith("%PDF-")) &&
           !candidate.head().startsWith("\xFF\xFE") && !candidate.head().startsWith("\xFE\xFF");
}

class ForeignSource : public Source {
public:
    explicit ForeignSource(const QString& fileName) : m_fileName(absoluteFilePath(fileName)) {}

    [[nodiscard]] ContentsOutline readContents(const std::stop_token& /*stop*/) override
    {
        OutlineBuilder builder(m_fileName, extractRightDir(m_fileName));
        builder.note(Problem::Severity::Error,
                     QCoreApplication::translate("Sources", "The file cannot be opened: %1")
                         .arg(describe(FileError::UnknownKind)));
        auto outline = builder.take();
        outline.readable = false;
        return outline;
    }
    void readKeywords(KeywordSink& /*sink*/, const std::stop_token& /*stop*/) override {}

private:
    QString m_fileName;
};

} // namespace

HelpSetPlace placeOf(const QString& fileName)
{
    const Candidate candidate(fileName);
    const auto& kind = kindOf(candidate);
    if (kind.accepts == isHtml) {
        return htmlPlaceOf(fileName);
    }
    if (kind.accepts == isRegistered) {
        const auto document = readRegisteredDocument(fileName);
        const auto* html = document ? document->format(QStringLiteral("html")) : nullptr;
        if (html != nullptr && isRegularFile(html->index)) {
            return htmlPlaceOf(html->index);
        }
    }
    return {fileName, {}};
}

std::unique_ptr<Source> openSource(const QString& fileName)
{
    const Candidate candidate(fileName);
    return isForeign(candidate) ? std::make_unique<ForeignSource>(fileName)
                                : kindOf(candidate).open(fileName);
}

bool mayBeHelpSet(const QString& fileName)
{
    return isRegularFile(fileName) || !sourceError(fileName);
}

QString sourceTitle(const QString& fileName)
{
    const QString title = kindOf(Candidate(fileName)).title(fileName);
    return title.isEmpty() ? fileName : title;
}

std::optional<FileError> sourceError(const QString& fileName)
{
    const Candidate candidate(fileName);
    if (!isNative(candidate) && candidate.isFolder()) {
        return isHtmlFolder(fileName) ? std::nullopt : std::optional(FileError::NoPages);
    }
    if (const auto error = RegularFile(fileName).error()) {
        return error;
    }
    return isForeign(candidate) ? std::optional(FileError::UnknownKind) : std::nullopt;
}

int pageCount(const QString& fileName, const std::stop_token& stop)
{
    return kindOf(Candidate(fileName)).pages(fileName, stop);
}

QString pagesFolder(const QString& fileName)
{
    return kindOf(Candidate(fileName)).folder(fileName);
}

QString sourceKindName(const QString& fileName)
{
    return QCoreApplication::translate("Sources", kindOf(Candidate(fileName)).name);
}

QStringList sourceFilters()
{
    QStringList filters;
    for (const auto& kind : kinds) {
        if (*kind.patterns != '\0') {
            filters.append(QCoreApplication::translate("Sources", kind.name) + QStringLiteral(" (") +
                           QLatin1StringView(kind.patterns) + u')');
        }
    }
    return filters;
}

QStringList packageFolders(const QString& dataFolder)
{
    QStringList folders;
    for (const auto* folder : {"/qt5/doc", "/qt6/doc", "/doc/qt5", "/doc/qt6", "/doc/qch"}) {
        folders.append(dataFolder + QLatin1StringView(folder));
    }
    return folders;
}

QString packedPageOnMachine(const QString& name)
{
    for (const auto& data : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        for (const auto& folder : packageFolders(data)) {
            if (QString page = QchFile::findPage(folder, name); !page.isNull()) {
                return page;
            }
        }
    }
    return {};
}

std::unique_ptr<Package> openPackage(const QString& fileName)
{
    const auto open = kindOf(Candidate(fileName)).openPackage;
    return open == nullptr ? nullptr : open(fileName);
}
