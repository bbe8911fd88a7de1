// SPDX-License-Identifier: MIT
#pragma once

#include "formats/regularfile.h"
#include "formats/result.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// A file that holds the files of many pages. The path of a packed file is that of the package, "/", and its
/// name in there. For one thread at a time.
class Package {
public:
    Package() = default;
    Q_DISABLE_COPY_MOVE(Package)
    virtual ~Package() = default;

    /// Bytes that it takes in the package; none when there is no such file.
    [[nodiscard]] virtual std::optional<qint64> packedSize(const QString& name) = 0;
    /// All bytes, or the first `most` of them.
    [[nodiscard]] virtual Result<QByteArray, FileError> read(const QString& name, qint64 most) = 0;
    /// The path of what a link of its pages means that leads to none of its files, such as a page of another
    /// package; null when it is nowhere.
    [[nodiscard]] virtual QString elsewhere(const QString& name) = 0;
};
