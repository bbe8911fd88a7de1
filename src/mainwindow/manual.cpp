// SPDX-License-Identifier: MIT
#include "mainwindow/manual.h"

#include <QCoreApplication>
#include <QFileInfo>

QString manualContentsFile()
{
    const QString dir = QCoreApplication::applicationDirPath();
    for (const auto& place : {QStringLiteral("/../share/quenda/manual/quenda.cnt"),
                              QStringLiteral("/../../../docs/manual/quenda.cnt")}) {
        const QFileInfo file(dir + place);
        if (file.isFile()) {
            return file.canonicalFilePath();
        }
    }
    return {};
}
