// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

/// The text of a style sheet that a page refers to, which is read from regular files of this machine only;
/// empty, but never null, when it is missing or large.
[[nodiscard]] QString loadStyleSheet(const QUrl& url);
