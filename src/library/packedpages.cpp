// SPDX-License-Identifier: MIT
#include "library/packedpages.h"

#include "formats/paths.h"
#include "library/helplibrary.h"
#include "sources/pagefiles.h"

QString pageInOpenSet(const HelpLibrary& library, const QString& target)
{
    const QString name = packedName(target);
    const QString package = packageOf(target);
    const auto fileOf = [](const QString& page) { return page.section(u'#', 0, 0); };
    if (name.isNull() || (!package.isNull() && library.isOpen(package) && isPageFile(fileOf(target)))) {
        return target;
    }
    for (const auto* root : library.roots()) {
        QString page = absoluteFilePath(root->fileName) + u'/' + name;
        if (isPageFile(fileOf(page))) {
            return page;
        }
    }
    return target;
}
