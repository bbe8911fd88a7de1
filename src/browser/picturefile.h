// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

/// A file of a picture, opened once for what it is and once for each reading. SVG pictures are drawings: they
/// are read once only, lack what they take from other files, and are sharp at any size.
class PictureFile {
public:
    PictureFile() = default;
    explicit PictureFile(const QString& fileName);

    /// As it was made, in pixels; empty when the file is no picture, or one that is too large to be read.
    [[nodiscard]] QSize size() const { return m_size; }
    /// The picture in as many pixels as asked for, but in no direction more than size() unless it is a
    /// drawing; null when it is damaged.
    [[nodiscard]] QImage read(const QSize& pixels) const;
    /// Memory that this takes, in bytes.
    [[nodiscard]] qsizetype cost() const { return qsizetype(sizeof(*this)) + m_drawing.size(); }

private:
    QString m_fileName;
    QByteArray m_drawing; ///< SVG; empty for other kinds
    QSize m_size;
};

/// Whether the name leads to a regular file that is a picture. A text that begins like one is none.
[[nodiscard]] bool isPicture(const QString& fileName);
