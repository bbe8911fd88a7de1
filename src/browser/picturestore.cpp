// SPDX-License-Identifier: MIT
#include "browser/picturestore.h"

#include <algorithm>
#include <cmath>

namespace {

/// A size of the same shape that is not too large to be decoded.
QSize affordable(const QSize& pixels)
{
    const qint64 area = qint64(pixels.width()) * pixels.height();
    return area <= PictureStore::LargestPicture
               ? pixels
               : pixels * std::sqrt(double(PictureStore::LargestPicture) / double(area));
}

} // namespace

QSize PictureStore::size(const QString& fileName)
{
    const auto known = m_sizes.constFind(fileName);
    return known != m_sizes.cend() ? *known : m_sizes.insert(fileName, file(fileName).size()).value();
}

bool PictureStore::isReady(const QString& fileName, const QSize& pixels) const
{
    const auto* decoded = m_decoded.object(fileName);
    return decoded != nullptr && decoded->asked == affordable(pixels);
}

QImage PictureStore::picture(const QString& fileName, const QSize& pixels)
{
    const QSize asked = affordable(pixels);
    if (!isReady(fileName, pixels)) {
        QImage image = file(fileName).read(asked);
        auto decoded = std::make_unique<Decoded>(Decoded{asked, image});
        m_decoded.insert(fileName, decoded.release(), std::max<qsizetype>(1, image.sizeInBytes()));
        return image;
    }
    return m_decoded.object(fileName)->image;
}

void PictureStore::clear()
{
    m_sizes.clear();
    m_files.clear();
    m_decoded.clear();
}

const PictureFile& PictureStore::file(const QString& fileName)
{
    if (!m_files.contains(fileName)) {
        // No drawing is as large as all that may be kept.
        auto opened = std::make_unique<PictureFile>(fileName);
        const auto cost = std::min(opened->cost(), LargestFiles);
        m_files.insert(fileName, opened.release(), cost);
    }
    return *m_files.object(fileName);
}
