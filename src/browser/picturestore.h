// SPDX-License-Identifier: MIT
#pragma once

#include "browser/picturefile.h"

#include <QCache>
#include <QHash>

/// The pictures of a page. Each is opened once for what it is, decoded as large as it is shown, and kept
/// while all of them together take no more memory than allowed.
class PictureStore {
public:
    static constexpr qsizetype LargestSum = 64'000'000;   ///< bytes of decoded pictures
    static constexpr qint64 LargestPicture = 8'000'000;   ///< pixels; larger ones are shown less sharp
    static constexpr qsizetype LargestFiles = 16'000'000; ///< bytes of drawings before they are painted

    /// As PictureFile::size().
    [[nodiscard]] QSize size(const QString& fileName);
    /// Whether picture() has nothing to decode.
    [[nodiscard]] bool isReady(const QString& fileName, const QSize& pixels) const;
    /// The picture as large as is needed to show it at a size in pixels; null when it cannot be shown.
    [[nodiscard]] QImage picture(const QString& fileName, const QSize& pixels);
    /// Memory that decoded pictures take, in bytes.
    [[nodiscard]] qsizetype sum() const { return m_decoded.totalCost(); }
    void clear();

private:
    struct Decoded {
        QSize asked;
        QImage image;
    };

    const PictureFile& file(const QString& fileName);

    QHash<QString, QSize> m_sizes;
    QCache<QString, PictureFile> m_files{LargestFiles};
    QCache<QString, Decoded> m_decoded{LargestSum};
};
