// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/// The contents files of all help sets that have ever been opened, the latest first. They are kept in the
/// settings store; write errors are not reported.
namespace OpenedSets {

constexpr qsizetype Maximum = 50;

[[nodiscard]] QStringList load();
/// These have been opened, the latest first.
void remember(const QStringList& fileNames);
void forget(const QString& fileName);
void clear();

/// What was open together when the viewer was closed with something else open than before; empty for nothing.
[[nodiscard]] QStringList loadEarlierSession();
void saveEarlierSession(const QStringList& fileNames);

} // namespace OpenedSets
