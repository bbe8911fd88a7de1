// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// A document that a package has registered with doc-base: a control file that says what it is called and
/// where it is, in one or more formats.
struct RegisteredDocument {
    struct Format {
        QString name; ///< in lower case, such as "html"
        QString index;
        QString files; ///< patterns, separated by blanks
    };

    QString title;
    QString section;
    QString abstract;
    std::vector<Format> formats;

    /// Null when there is none.
    [[nodiscard]] const Format* format(const QString& name) const;
};

/// None when the file is no such control file.
[[nodiscard]] std::optional<RegisteredDocument> readRegisteredDocument(const QString& fileName);

/// The files that a format's patterns mean, which exist; at most a thousand.
[[nodiscard]] QStringList matchingFiles(const QString& patterns);
