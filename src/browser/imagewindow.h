// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

/// Modal window that shows one picture at its natural size.
class ImageWindow : public QDialog {
    Q_OBJECT

public:
    explicit ImageWindow(const QString& fileName);
};
