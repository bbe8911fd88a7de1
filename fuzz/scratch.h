// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// The input of one run.
[[nodiscard]] inline QByteArray inputBytes(const uint8_t* data, size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
}

/// Ends the program unless something holds that must hold for every input.
inline void require(bool holds, int line = __builtin_LINE())
{
    if (!holds) {
        std::fprintf(stderr, "line %d of the target: does not hold\n", line);
        std::abort();
    }
}

/// A directory in memory for the files that a target reads.
class Scratch {
public:
    [[nodiscard]] QString path(const QString& name) const { return m_dir.path() + u'/' + name; }

    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }

private:
    QTemporaryDir m_dir{QStringLiteral("/dev/shm/quenda-fuzz-XXXXXX")};
};
