// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

/// Whether the name leads to a regular file that is a picture.
[[nodiscard]] bool isPicture(const QString& fileName);

/// Modal window that shows one picture at its natural size.
class ImageWindow : public QDialog {
    Q_OBJECT

public:
    explicit ImageWindow(const QString& fileName);
};
