// SPDX-License-Identifier: MIT
#include "mainwindow/malformedfiles.h"

#include "browser/messages.h"
#include "library/helplibrary.h"

#include <QCoreApplication>
#include <QLabel>
#include <QTimer>
#include <QWidget>

#include <algorithm>

namespace {

constexpr qsizetype MaximumListed = 20;

/// File, line and reason of each error in these files, a line for each.
QString placesOf(const QStringList& files, const std::vector<Problem>& problems)
{
    QStringList lines;
    for (const auto& problem : problems) {
        if (problem.severity == Problem::Severity::Error && files.contains(problem.file) &&
            lines.size() < MaximumListed) {
            lines += QCoreApplication::translate("MalformedFiles", "%1, line %2: %3")
                         .arg(problem.file)
                         .arg(problem.line)
                         .arg(problem.message);
        }
    }
    return lines.join(u'\n');
}

} // namespace

void reportMalformedFiles(const QStringList& files, const std::vector<Problem>& problems, QWidget* parent)
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
    const QString places = placesOf(named, problems);
    QTimer::singleShot(0, parent, [parent, title, places, text = lines.join(u'\n')] {
        auto* box = openMessage(QMessageBox::Critical, title, text, parent);
        box->setInformativeText(places);
        if (auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
            label->setTextFormat(Qt::PlainText);
        }
    });
}
