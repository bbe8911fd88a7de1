// SPDX-License-Identifier: MIT
#include "pages/links.h"

#include "formats/paths.h"
#include "sources/pagefiles.h"
#include "sources/sources.h"

#include <QDir>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <array>

namespace {

bool hasRemotePrefix(QStringView trimmed)
{
    return trimmed.startsWith(u"http://") || trimmed.startsWith(u"https://") || trimmed.startsWith(u"ftp://");
}

QString decoded(QStringView text)
{
    return text.contains(u'%') ? QUrl::fromPercentEncoding(text.toUtf8()) : text.toString();
}

QString absoluteIn(const QString& dir, const QString& name)
{
    return QDir::cleanPath(name.startsWith(u'/') ? name : dir + name);
}

/// The file that a path means: as decoded, else as written, else as decoded without its "?query".
QString existingFile(const QString& dir, QStringView path)
{
    QString preferred = absoluteIn(dir, decoded(path));
    if (isPageFile(preferred)) {
        return preferred;
    }
    QString raw = absoluteIn(dir, path.toString());
    if (isPageFile(raw)) {
        return raw;
    }
    if (QString elsewhere = pageFileElsewhere(preferred); !elsewhere.isNull()) {
        return elsewhere;
    }
    const qsizetype query = path.indexOf(u'?');
    return query < 0 ? preferred : absoluteIn(dir, decoded(path.first(query)));
}

/// The path of what a link of a package's own scheme means, which names a package, a folder and a page; null
/// for other links.
QString packedLink(const QString& pageFile, QStringView link)
{
    if (!link.startsWith(u"qthelp://")) {
        return {};
    }
    const QString name = packedName(decoded(link));
    const QString package = packageOf(pageFile);
    if (name.isEmpty()) {
        return {};
    }
    return package.isNull() ? packedPageOnMachine(name) : existingFile(package + u'/', name);
}

struct Target {
    QString file;   ///< absolute path, or what the link says when it leads to none
    QString anchor; ///< with "#"; null for none
};

Target resolve(const QString& pageFile, const QString& href)
{
    const QString dir = extractRightDir(pageFile);
    const QStringView trimmed = QStringView(href).trimmed();
    if (hasRemotePrefix(trimmed)) {
        return {href, {}};
    }
    if (trimmed.startsWith(u"//")) {
        return {QStringLiteral("https:") + trimmed, {}};
    }
    if (trimmed.startsWith(u"file:", Qt::CaseInsensitive)) {
        const QUrl url(trimmed.toString());
        const bool isHere = url.host().isEmpty() || url.host() == u"localhost";
        return {isHere ? absoluteIn(dir, url.path(QUrl::FullyDecoded)) : href,
                isHere && url.hasFragment() ? u'#' + url.fragment(QUrl::FullyDecoded) : QString()};
    }
    const qsizetype hash = trimmed.indexOf(u'#');
    if (const QString packed = packedLink(pageFile, trimmed.first(hash < 0 ? trimmed.size() : hash));
        !packed.isNull()) {
        return {packed, hash < 0 ? QString() : decoded(trimmed.sliced(hash))};
    }
    const QStringView path = hash < 0 ? trimmed : trimmed.first(hash);
    const QString anchor = hash < 0 ? QString() : decoded(trimmed.sliced(hash));
    if (path.isEmpty()) {
        return {pageFile, anchor};
    }
    const QString file = existingFile(dir, path);
    // A file may look like a scheme ("std::list.html"); one that exists wins.
    if (!foreignScheme(href).isEmpty() && !isPageFile(file)) {
        return {href, {}};
    }
    return {file, anchor};
}

} // namespace

bool isRemoteName(const QString& name)
{
    static constexpr std::array pictures{QStringView(u".gif"), QStringView(u".bmp"), QStringView(u".png"),
                                         QStringView(u".jpg")};
    const QStringView trimmed = QStringView(name).trimmed();
    return hasRemotePrefix(trimmed) || std::any_of(pictures.begin(), pictures.end(), [&](QStringView suffix) {
               return trimmed.endsWith(suffix);
           });
}

QString foreignScheme(const QString& name)
{
    static const QRegularExpression scheme(QStringLiteral("^\\s*([A-Za-z][A-Za-z0-9+.-]+):"));
    const QString found = scheme.match(name).captured(1).toLower();
    return hasRemotePrefix(QStringView(name).trimmed()) || found == u"file" ? QString() : found;
}

QString resolveLink(const QString& pageFile, const QString& href)
{
    const auto target = resolve(pageFile, href);
    return target.file + target.anchor;
}

QString resolveFile(const QString& pageFile, const QString& href)
{
    const QString file = href.isEmpty() ? QString() : resolve(pageFile, href).file;
    return file.startsWith(u'/') ? file : QString();
}
