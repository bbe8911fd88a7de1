// SPDX-License-Identifier: MIT
#pragma once

#include "sources/source.h"

/// A registered document that is plain text. One of HTML is the set of its folder.
class RegisteredSource : public Source {
public:
    explicit RegisteredSource(const QString& fileName) : m_fileName(fileName) {}

    [[nodiscard]] static QString title(const QString& fileName);
    [[nodiscard]] ContentsOutline readContents(const std::stop_token& stop) override;
    void readKeywords(KeywordSink& sink, const std::stop_token& stop) override;

private:
    QString m_fileName;
};
