// SPDX-License-Identifier: MIT
#pragma once

#include <QUrl>
#include <QVariant>

/// A picture (QImage) or style sheet (QString) that a page refers to; `type` is a
/// QTextDocument::ResourceType. Only regular files of this machine are read. A picture that is missing comes
/// back as a small drawing that says so, a style sheet that is missing or large as an empty text.
[[nodiscard]] QVariant loadPageResource(int type, const QUrl& url);

/// Width of the picture in a file in pixels; 0 when the file is none that can be shown.
[[nodiscard]] int pictureWidth(const QString& file);
