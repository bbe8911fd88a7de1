// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QTextDocument>
#include <QTimer>

#include <functional>
#include <vector>

class QTextBlock;
class QTextEdit;

/// All places of a page that match a text, found slice by slice in the event loop. Those in sight are marked
/// by the view's extra selections, which belong to the search that was made last.
class PageMatches : public QObject {
    Q_OBJECT

public:
    /// A piece of text that matches, in UTF-16 code units.
    struct Match {
        int start;
        int length;
    };
    /// Finds what matches in the text of a paragraph, in order and apart. No-break spaces come as spaces.
    using Matcher = std::function<std::vector<Match>(const QString& text)>;

    PageMatches(QTextEdit* view, QObject* parent);
    ~PageMatches() override;

    /// Looks from the top for what `matcher` finds; counted() tells the end.
    void search(const Matcher& matcher);
    /// Looks for `text` as QTextDocument::find() would.
    void search(const QString& text, QTextDocument::FindFlags options);
    /// Forgets all matches and takes the marks away.
    void clear();

    [[nodiscard]] bool isSearching() const { return m_sliceTimer.isActive(); }
    /// Of the matches found so far.
    [[nodiscard]] int count() const { return int(m_matches.size()); }
    /// Whether the page has more matches than are counted.
    [[nodiscard]] bool isCapped() const { return m_matches.size() >= MaximumCount; }
    /// Number, from 1, of the match that is selected in the view; 0 when none is.
    [[nodiscard]] int current() const;
    /// Selects the match behind or before the cursor, from the other end when there is none, and brings it
    /// into sight.
    void step(bool forward);

    static constexpr size_t MaximumCount = 100000;

Q_SIGNALS:
    void counted();

private:
    void searchSlice();
    void searchBlock(const QTextBlock& block);
    void markVisible();
    void select(const Match& match);
    /// The first match that begins there or behind.
    [[nodiscard]] std::vector<Match>::const_iterator firstFrom(int position) const;

    QPointer<QTextEdit> m_view;
    Matcher m_matcher;
    QTimer m_sliceTimer;
    int m_nextBlock = 0;
    bool m_isMarking = false;     ///< the view shows marks of this search
    std::vector<Match> m_matches; ///< in the document, ascending
};
