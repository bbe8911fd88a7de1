// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Whether a name is for an external web browser: trimmed, it begins with "http://", "https://" or "ftp://",
/// or ends with ".gif", ".bmp", ".png" or ".jpg" (letter case counts).
[[nodiscard]] bool isRemoteName(const QString& name);

/// The scheme of a link that leads neither to a file nor to the web, such as "mailto"; empty for all others.
[[nodiscard]] QString foreignScheme(const QString& name);

/// The name of the page that `href`, as written in the page of the file `pageFile`, leads to: an absolute
/// path with percent escapes decoded, "#anchor" included. Links with a scheme other than "file" come back as
/// they are.
[[nodiscard]] QString resolveLink(const QString& pageFile, const QString& href);

/// The local file that a reference of a page means, such as the source of a picture: its absolute path
/// without the anchor; empty when it means none.
[[nodiscard]] QString resolveFile(const QString& pageFile, const QString& href);
