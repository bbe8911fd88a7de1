// SPDX-License-Identifier: MIT
#pragma once

#include "library/helplibrary.h"
#include "syntheticset.h"

#include <QTemporaryDir>

#include <map>
#include <memory>

/// A help set on disk that goes with the object.
class Set {
public:
    explicit Set(SyntheticSize size) { writeSyntheticSet(m_dir.path(), size); }

    [[nodiscard]] QString contents() const { return path("bench.cnt"); }
    [[nodiscard]] QString index() const { return path("bench.idx"); }
    [[nodiscard]] QString page(int number) const
    {
        return path("topics/") + QStringLiteral("%1/topic%2.html").arg(number / 1000).arg(number);
    }

private:
    [[nodiscard]] QString path(const char* name) const
    {
        return m_dir.path() + u'/' + QLatin1StringView(name);
    }

    QTemporaryDir m_dir;
};

/// Contents and keywords of a help set of this size; its pages are not there any more.
inline HelpLibrary& loadedLibrary(SyntheticSize size)
{
    static std::map<std::pair<int, int>, std::unique_ptr<HelpLibrary>> libraries;
    auto& library = libraries[{size.topics, size.keywords}];
    if (library == nullptr) {
        const Set set(size);
        library = std::make_unique<HelpLibrary>();
        library->loadContents(set.contents(), nullptr);
        library->buildIndex();
    }
    return *library;
}
