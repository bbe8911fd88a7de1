// SPDX-License-Identifier: MIT
#include "pages/pagefile.h"

#include "formats/paths.h"
#include "markup/pagedecoding.h"
#include "sources/pagefiles.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>

namespace {

PageError fromFileError(FileError error)
{
    switch (error) {
    case FileError::NotFound:
    case FileError::ForeignName:
        return PageError::NotFound;
    case FileError::Directory:
        return PageError::Directory;
    case FileError::NotRegular:
        return PageError::NotRegular;
    case FileError::TooLarge:
        return PageError::TooLarge;
    case FileError::Unreadable:
    case FileError::NoPages:
    case FileError::UnknownKind:
        break;
    }
    return PageError::Unreadable;
}

QString withIndexPage(const QString& file)
{
    const QString index = getRightDir(file) + QStringLiteral("index.html");
    return QFileInfo(fileSystemName(file)).isDir() && isPageFile(index) ? index : file;
}

bool isText(const QByteArray& bytes)
{
    const auto bom = QStringConverter::encodingForData(bytes);
    if (bom && *bom != QStringConverter::Utf8) {
        return true;
    }
    return !bytes.startsWith("%PDF-") && !bytes.first(std::min<qsizetype>(bytes.size(), 4096)).contains('\0');
}

/// Half a character at the end would make all of the text one that is not UTF-8.
void dropCutCharacter(QByteArray& bytes)
{
    qsizetype size = bytes.size();
    while (size > 0 && bytes.size() - size < 4 && static_cast<unsigned char>(bytes[size - 1]) >= 0x80) {
        --size;
    }
    bytes.truncate(size);
}

/// Whether the name of a file says that it holds text of another kind, such as source code.
bool isNamedAsOtherText(const QString& file)
{
    static const QString plain = QStringLiteral("text/plain");
    const auto type = QMimeDatabase().mimeTypeForFile(file, QMimeDatabase::MatchExtension);
    return type.inherits(plain) && !type.inherits(QStringLiteral("text/html")) &&
           !type.inherits(QStringLiteral("application/xml"));
}

/// Tags within a text are no sign: "#include <vector>" and "usage: copy <file>" are no HTML.
bool looksLikeHtml(const QString& file, const QString& text)
{
    const QString suffix = QFileInfo(file).suffix().toLower();
    if (suffix.startsWith(u"htm") || suffix == u"xhtml" || suffix == u"shtml") {
        return true;
    }
    static const QRegularExpression document(
        QStringLiteral(R"(^(?:\s|<\?xml[^>]*>|<!--(?:[^-]|-(?!->))*-->)*<(?:!doctype\s+html|html)\b)"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression tag(QStringLiteral("^\\s*<(?:!doctype|!--|\\?xml|[a-z][a-z0-9]*[\\s/>])"),
                                        QRegularExpression::CaseInsensitiveOption);
    constexpr qsizetype headSize = 4096;
    const QString head = text.left(headSize);
    return suffix != u"txt" &&
           (document.match(head).hasMatch() || (tag.match(head).hasMatch() && !isNamedAsOtherText(file)));
}

} // namespace

PageLocation locatePage(const QString& name)
{
    if (isPageFile(name) || !name.contains(u'#')) {
        return {withIndexPage(name), {}};
    }
    const auto found =
        splitPageName(name, [](const QString& file) { return isPageFile(withIndexPage(file)); });
    if (found) {
        return {withIndexPage(found->file), found->anchor};
    }
    const qsizetype hash = anchorPosition(name);
    return hash < 0 ? PageLocation{withIndexPage(name), {}}
                    : PageLocation{name.first(hash), name.sliced(hash + 1)};
}

QString describe(PageError error)
{
    switch (error) {
    case PageError::NotFound:
        return QCoreApplication::translate("PageError", "There is no such file.");
    case PageError::Directory:
        return QCoreApplication::translate("PageError", "This is a directory, not a page.");
    case PageError::NotRegular:
        return QCoreApplication::translate("PageError", "This is not a regular file.");
    case PageError::Unreadable:
        return QCoreApplication::translate("PageError",
                                           "The file cannot be read. You may lack the permission.");
    case PageError::TooLarge:
        return QCoreApplication::translate("PageError", "The file is larger than 1 GiB.");
    case PageError::NotText:
        return QCoreApplication::translate("PageError", "The file does not hold text.");
    case PageError::NothingToShow:
        return QCoreApplication::translate(
            "PageError",
            "The page holds nothing that can be shown here, for example only scripts or frames.");
    case PageError::Empty:
        return QCoreApplication::translate("PageError", "The file is empty.");
    }
    return {};
}

Result<PageText, PageError> readPage(const QString& file, qint64 most)
{
    auto read = readPageFile(file, most);
    if (!read.ok()) {
        return fromFileError(read.error());
    }
    QByteArray bytes = read.take();
    if (bytes.size() >= most) {
        dropCutCharacter(bytes);
    }
    if (!isText(bytes)) {
        return PageError::NotText;
    }
    const QString text = decodePage(bytes);
    if (QStringView(text).trimmed().isEmpty()) {
        return PageError::Empty;
    }
    return PageText{text, looksLikeHtml(file, text)};
}
