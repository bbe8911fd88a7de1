// SPDX-License-Identifier: MIT
#include "scratch.h"

#include "formats/helpsettitle.h"
#include "formats/paths.h"
#include "formats/textdecoding.h"
#include "pages/links.h"
#include "pages/pagefile.h"

/// What is done with names of files, titles and links. The input is the name of a page and, behind the first
/// line end, a link in it.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = decodeText(inputBytes(data, size));
    const QString name = text.section(u'\n', 0, 0);
    const QString link = text.section(u'\n', 1);

    if (name.isEmpty() || text.contains(QChar(u'\0'))) {
        static_cast<void>(resolveLink(absoluteFilePath(name), link));
        return 0;
    }
    const QString absolute = absoluteFilePath(name);
    require(absolute.startsWith(u'/'));
    require(absoluteFilePath(absolute) == absolute && isOneFile(name, absolute));
    const QString dir = extractRightDir(name);
    require(dir.startsWith(u'/') && dir.endsWith(u'/') && getRightDir(dir) == dir);
    const qsizetype anchor = anchorPosition(name);
    require(anchor < 0 || name.at(anchor) == u'#');
    const auto location = locatePage(name);
    require(location.anchor.isEmpty() || name.endsWith(u'#' + location.anchor));
    const auto value = directiveValue(name.trimmed(), TitleDirective);
    require(!value || value->size() < name.size());

    const QString target = resolveLink(absolute, link);
    require(isRemoteName(target) || !foreignScheme(target).isEmpty() || target == link ||
            target.startsWith(u'/') || target.startsWith(absolute));
    return 0;
}
