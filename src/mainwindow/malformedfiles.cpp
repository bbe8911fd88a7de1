// SPDX-License-Identifier: MIT
#include "mainwindow/malformedfiles.h"

#include "browser/messages.h"

#include <QCoreApplication>
#include <QTimer>
#include <QWidget>

#include <algorithm>

namespace {

constexpr qsizetype MaximumListed = 20;

} // namespace

void reportMalformedFiles(const QStringList& files, QWidget* parent)
{
    if (files.isEmpty()) {
        return;
    }
    // A file may be included more than once.
    QStringList named = files;
    named.removeDuplicates();
    QStringList lines;
    for (const auto& file : named.first(std::min(named.size(), MaximumListed))) {
        lines.append(QCoreApplication::translate("MalformedFiles", "'%1' not a contents file.").arg(file));
    }
    if (named.size() > MaximumListed) {
        lines.append(QCoreApplication::translate("MalformedFiles", "… and %1 more.")
                         .arg(named.size() - MaximumListed));
    }
    const QString title = QCoreApplication::translate("MalformedFiles", "Load contents error");
    QTimer::singleShot(0, parent, [parent, title, text = lines.join(u'\n')] {
        openMessage(QMessageBox::Critical, title, text, parent);
    });
}
