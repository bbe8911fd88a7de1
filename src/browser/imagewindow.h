// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

/// Modal window that shows one picture at its natural size. Deletes itself when it is closed.
class ImageWindow : public QDialog {
    Q_OBJECT

public:
    explicit ImageWindow(const QString& fileName);

    [[nodiscard]] const QString& fileName() const { return m_fileName; }

private:
    QString m_fileName;
};
