// SPDX-License-Identifier: MIT
#pragma once

#include "sources/source.h"

#include <QCoreApplication>
#include <QXmlStreamReader>

/// A book of the Devhelp formats, versions 1 and 2, compressed or not: chapters, then keywords, as XML. Its
/// pages are files beside it.
class DevhelpSource : public Source {
    Q_DECLARE_TR_FUNCTIONS(DevhelpSource)

public:
    static constexpr qint64 LargestBook = 128'000'000; ///< bytes, not compressed
    static constexpr int DeepestElement = 500;

    explicit DevhelpSource(const QString& fileName);

    [[nodiscard]] static QString title(const QString& fileName);
    /// Of its pages, without "/" at its end; null when the file is no book.
    [[nodiscard]] static QString folder(const QString& fileName);
    [[nodiscard]] ContentsOutline readContents(const std::stop_token& stop) override;
    void readKeywords(KeywordSink& sink, const std::stop_token& stop) override;

private:
    bool openBook();
    bool nextElement(int& depth);
    [[nodiscard]] QString problem() const;

    QString m_fileName;
    QString m_directory;
    QString m_title;
    QString m_link;
    QString m_problem; ///< null while all goes well
    QXmlStreamReader m_reader;
};
