// SPDX-License-Identifier: MIT
#pragma once

#include "formats/contentsoutline.h"
#include "formats/regularfile.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>
#include <QStringList>

#include <stop_token>

/// Reads a contents file and the contents files that it includes into an outline. Touches nothing but those
/// files.
class ContentsReader {
    Q_DECLARE_TR_FUNCTIONS(ContentsReader)

public:
    static constexpr int MaximumNesting = 64;
    static constexpr int MaximumEntries = 2'000'000;
    static constexpr int MaximumIncludes = 10'000; ///< of any files, even of missing ones
    /// Of all files that are included, each time: lines, and what long ones take in addition.
    static constexpr qint64 MaximumWork = 50'000'000;

    /// Never fails: what cannot be read is missing from the outline and listed among its problems. Once a
    /// stop has been asked for, the outline ends anywhere.
    [[nodiscard]] ContentsOutline read(const QString& fileName, std::stop_token stop = {});

private:
    struct Source;

    int addFile(const Source& source);
    void readFile(Source& source, const QString& text);
    void readDirective(Source& source, QStringView trimmed);
    void readTitle(Source& source, QStringView value);
    void readIndexReference(Source& source, QStringView value);
    bool readEntry(Source& source, QStringView line, QStringView trimmed, const QString& text);
    [[nodiscard]] static OutlineEntry makeEntry(const Source& source, QStringView trimmed);
    void include(const Source& source, int row);
    [[nodiscard]] QString identity(const QString& path);
    [[nodiscard]] QString refusal(const QString& file) const;
    void stop(const Source& source, const QString& reason);
    [[nodiscard]] Result<QString, FileError> includedText(const QString& path, const QString& file);

    [[nodiscard]] bool isMergeable(const Source& source, const OutlineEntry& entry,
                                   const QString& text) const;
    int append(const OutlineEntry& entry);
    void insertFirstChild(int row, int parent);
    void insertAfter(int row, int predecessor);
    [[nodiscard]] int ancestor(int row, int steps) const;
    void note(const Source& source, Problem::Severity severity, const QString& message);

    ContentsOutline m_outline;
    QHash<QString, QString> m_identities; ///< by path
    QHash<QString, QString> m_texts;      ///< of included files, by identity
    QStringList m_openFiles;              ///< identities of the files being read, outermost first
    QSet<QString> m_noted;                ///< problems; files may be included many times
    std::stop_token m_stop;
    int m_includes = 0;
    qint64 m_work = 0;
    bool m_full = false;
};

/// Whether the contents file has exactly one unindented entry line; false when it cannot be read.
[[nodiscard]] bool onlyOneTopContent(const QString& fileName);
