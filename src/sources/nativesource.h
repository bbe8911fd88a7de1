// SPDX-License-Identifier: MIT
#pragma once

#include "sources/source.h"

#include <QHash>

#include <vector>

/// A contents file with its index files.
class NativeSource : public Source {
public:
    static constexpr size_t MaximumKeywordLines = 50'000'000; ///< empty ones, and those read again, included

    explicit NativeSource(const QString& fileName) : m_fileName(fileName) {}
    /// For keywords only: index files that `files` name.
    NativeSource(const std::vector<IndexReference>& references, const std::vector<QString>& files)
        : m_references(references), m_files(files)
    {
    }

    [[nodiscard]] ContentsOutline readContents(const std::stop_token& stop) override;
    void readKeywords(KeywordSink& sink, const std::stop_token& stop) override;

private:
    struct Text {
        QStringView text;
        size_t lines; ///< at most
    };
    const Text* textOf(const IndexReference& reference, KeywordSink& sink);
    bool addKeywords(const KeywordFile& file, const Text& text, KeywordSink& sink,
                     const std::stop_token& stop);

    QString m_fileName;
    std::vector<IndexReference> m_references;
    std::vector<QString> m_files;
    QHash<QString, Text> m_texts; ///< by absolute paths: each is read once, however often it is named
};
