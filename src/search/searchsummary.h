// SPDX-License-Identifier: MIT
#pragma once

#include "fulltext/searchanswer.h"

#include <QLabel>

/// How far the help sets can be searched.
enum class IndexState {
    Complete,
    UnderWay,
    Stopped, ///< the user gave it up
};

/// A few words about what a search found and what it could not look at, with links to what can be done about
/// it.
class SearchSummary : public QLabel {
    Q_OBJECT

public:
    explicit SearchSummary(QWidget* parent);

    /// `unreadable` pages could not be read when indexes were made.
    void setIndexState(IndexState state, qsizetype unreadable);
    void setAnswer(const SearchAnswer& answer);
    void clearAnswer();

Q_SIGNALS:
    /// The user wants the query near to the one that finds nothing.
    void nearestRequested();
    void indexingRequested();
    void problemsRequested();

protected:
    void changeEvent(QEvent* event) override;

private:
    void renew();

    QString m_found; ///< HTML; empty when nothing is searched for
    IndexState m_state = IndexState::Complete;
    qsizetype m_unreadable = 0;
};
