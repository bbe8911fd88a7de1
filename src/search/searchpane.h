// SPDX-License-Identifier: MIT
#pragma once

#include "search/searchscope.h"
#include "search/searchsummary.h"

#include <QWidget>

class QLineEdit;
class SearchList;
class SearchModel;

/// The search pane: a field for words, and the pages that have them. It asks for a search at every key and
/// shows the answer when it comes, if that is still the answer to what stands in the field.
class SearchPane : public QWidget {
    Q_OBJECT

public:
    explicit SearchPane(QWidget* parent);

    /// The help sets that can be searched.
    void setHelpSets(const QList<SearchChoice>& sets);
    /// The contents file of the help set that is read; empty for none.
    void setCurrentSet(const QString& contentsFile) { m_scope->setCurrent(contentsFile); }
    /// Where to search, see SearchScope::choice().
    void setScope(const QStringList& choice) { m_scope->setChoice(choice); }
    /// See SearchSummary.
    void setIndexState(IndexState state, qsizetype unreadable);
    void showAnswer(const SearchAnswer& answer);
    /// Asks for the same search again, because there is more to find, or less.
    void searchAgain();
    /// From now on searches this help set only; the name is absolute.
    void searchIn(const QString& contentsFile);
    void setQuery(const QString& query);
    /// Selects the text of the field, so that typing replaces it.
    void selectQuery();

Q_SIGNALS:
    void searchRequested(const SearchRequest& request);
    /// The user wants to see this page with what `query` finds in it.
    void pageRequested(const SearchHit& hit, const QString& query);
    void linkHovered(const QString& page);
    /// The user has chosen where to search.
    void scopeChosen(const QStringList& choice);
    /// The user wants the rest of the pages indexed.
    void indexingRequested();
    /// The user wants to know which pages could not be read.
    void problemsRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void connectField();
    void connectList();
    void queryChanged();
    void clearHits();
    void showHits();
    [[nodiscard]] bool isAnswered() const;

    void openBest();
    void open(const QModelIndex& index);
    void enterList();
    void leaveList();
    void wantMore();

    QLineEdit* m_field;
    SearchScope* m_scope;
    SearchSummary* m_summary;
    SearchList* m_list;
    SearchModel* m_model;
    SearchRequest m_request;    ///< the last one
    SearchAnswer m_answer;      ///< what the list shows
    bool m_opensAnswer = false; ///< Return was pressed before the answer came
};
