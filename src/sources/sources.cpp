// SPDX-License-Identifier: MIT
#include "sources/sources.h"

#include "formats/helpsettitle.h"
#include "sources/nativesource.h"

std::unique_ptr<Source> openSource(const QString& fileName)
{
    return std::make_unique<NativeSource>(fileName);
}

QString sourceTitle(const QString& fileName)
{
    return getTitle(fileName);
}

std::optional<FileError> sourceError(const QString& fileName)
{
    return RegularFile(fileName).error();
}
