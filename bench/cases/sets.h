// SPDX-License-Identifier: MIT
#pragma once

#include "syntheticset.h"

#include <QTemporaryDir>

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
