// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QString>

/// Whether the name leads to a regular file that is a picture.
[[nodiscard]] bool isPicture(const QString& fileName);

/// The picture in a file; null when the file is none, is damaged or too large. SVG pictures lack what they
/// take from other files.
[[nodiscard]] QImage readPicture(const QString& fileName);

/// Its size in pixels without reading all of it; invalid when readPicture() would give none for its kind.
[[nodiscard]] QSize pictureSize(const QString& fileName);
