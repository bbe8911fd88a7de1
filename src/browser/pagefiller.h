// SPDX-License-Identifier: MIT
#pragma once

#include "pages/preparedpage.h"

#include <QObject>
#include <QTimer>

class QTextDocument;

/// Puts a long page into a document part by part, so that its beginning is seen at once and the window stays
/// alive meanwhile. The document must outlive it and be changed by nobody else until the page is complete.
class PageFiller : public QObject {
    Q_OBJECT

public:
    explicit PageFiller(QTextDocument& document);

    /// Drops what is left of another page. The first part, which is returned, is for the caller to show.
    [[nodiscard]] QString begin(const PreparedPage& page);
    /// Adds the other parts from the event loop.
    void goOn();
    /// Adds the next part; false when there is none.
    bool addPart();
    /// Adds all that is left.
    void complete();
    /// Leaves out what is left of an incomplete page and ends it with `html`; returns how much of its HTML is
    /// shown.
    qsizetype stop(const QString& html);
    [[nodiscard]] bool isComplete() const { return m_next == m_ends.size(); }

Q_SIGNALS:
    /// A part was added behind a position of the document.
    void partAdded(int position);

private:
    QString takeUntil(qsizetype end);
    void append(const QString& html);

    QTextDocument& m_document;
    QString m_html;
    std::vector<qsizetype> m_ends; ///< of the parts, in `m_html`
    qsizetype m_begin = 0;         ///< of what is left
    size_t m_next = 0;
    QTimer m_timer;
};
