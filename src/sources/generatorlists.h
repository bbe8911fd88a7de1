// SPDX-License-Identifier: MIT
#pragma once

#include "sources/folderfiles.h"

#include <QJsonDocument>

/// Lists that generators of documentation leave beside their pages. All names are relative to the folder.
/// Files that are damaged give what can be read of them.

/// The array or object that a script assigns after `mark`, such as a list of names; null when there is none.
[[nodiscard]] QJsonDocument scriptData(const QByteArray& script, QByteArrayView mark);

/// The inventory of a Sphinx manual: names and where they are described.
void addInventory(const FolderFiles& files, const QString& list, std::vector<FolderKeyword>& keywords);

/// Doxygen's navigation tree, with the files that hold its branches.
[[nodiscard]] std::vector<FolderRow> doxygenRows(const FolderFiles& files, const QString& list);
/// What its branches call members, and its search knows.
void addDoxygenKeywords(const FolderFiles& files, const QString& list, std::vector<FolderKeyword>& keywords);

/// javadoc: packages with their types.
[[nodiscard]] std::vector<FolderRow> javadocRows(const FolderFiles& files, const QString& typeList);
void addJavadocKeywords(const FolderFiles& files, const QString& typeList,
                        std::vector<FolderKeyword>& keywords);

/// MkDocs: sections and their places.
void addMkDocsKeywords(const FolderFiles& files, const QString& list, std::vector<FolderKeyword>& keywords);
