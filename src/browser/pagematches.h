// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QTextDocument>
#include <QTimer>

#include <vector>

class QTextBlock;
class QTextEdit;

/// All places of a page that match a text, found slice by slice in the event loop. Those in sight are marked;
/// the view's extra selections belong to this class.
class PageMatches : public QObject {
    Q_OBJECT

public:
    PageMatches(QTextEdit* view, QObject* parent);
    ~PageMatches() override;

    /// Looks for `text` as QTextDocument::find() would, forward from the top; counted() tells the end.
    void search(const QString& text, QTextDocument::FindFlags options);
    /// Forgets all matches and takes the marks away.
    void clear();

    [[nodiscard]] bool isSearching() const { return m_sliceTimer.isActive(); }
    /// Of the matches found so far.
    [[nodiscard]] int count() const { return int(m_starts.size()); }
    /// Whether the page has more matches than are counted.
    [[nodiscard]] bool isCapped() const { return m_starts.size() >= MaximumCount; }
    /// Number, from 1, of the match that is selected in the view; 0 when none is.
    [[nodiscard]] int current() const;

    static constexpr size_t MaximumCount = 100000;

Q_SIGNALS:
    void counted();

private:
    void searchSlice();
    void searchBlock(const QTextBlock& block);
    void markVisible();

    QPointer<QTextEdit> m_view;
    QString m_text;
    QTextDocument::FindFlags m_options;
    QTimer m_sliceTimer;
    int m_nextBlock = 0;
    std::vector<int> m_starts; ///< positions in the document, ascending
};
