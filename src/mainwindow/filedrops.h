// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

class QMimeData;

/// Takes files that are dropped on a window, on whatever part of it.
class FileDrops : public QObject {
    Q_OBJECT

public:
    /// The parts of the window that take dropped text themselves must be there already.
    explicit FileDrops(QWidget& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void dropped(const QStringList& fileNames);

private:
    [[nodiscard]] static QStringList filesIn(const QMimeData& data);
};
