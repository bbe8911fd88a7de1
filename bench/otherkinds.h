// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// Writes the help set that writeSyntheticSet() has written into the directory once more as a Qt help file,
/// set.qch, and as a Devhelp book, set.devhelp2; also large.html, a page that is in both.
void writeOtherKinds(const QString& dir);

/// A page of 20 KB.
[[nodiscard]] QByteArray otherKindsPage(const QByteArray& title);
/// With the directories that are needed.
void writeBytes(const QString& name, const QByteArray& bytes);
