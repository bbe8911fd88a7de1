// SPDX-License-Identifier: MIT
#pragma once

#include "sources/qchfile.h"
#include "sources/source.h"

#include <QCoreApplication>

/// The help set of a Qt help file.
class QchSource : public Source {
    Q_DECLARE_TR_FUNCTIONS(QchSource)

public:
    explicit QchSource(const QString& fileName);

    [[nodiscard]] static QString title(const QString& fileName);
    [[nodiscard]] ContentsOutline readContents(const std::stop_token& stop) override;
    void readKeywords(KeywordSink& sink, const std::stop_token& stop) override;

private:
    QString m_fileName;
    QString m_directory; ///< of its pages
    QString m_title;
};
