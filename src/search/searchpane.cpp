// SPDX-License-Identifier: MIT
#include "search/searchpane.h"

#include "search/searchdelegate.h"
#include "search/searchlist.h"
#include "search/searchmodel.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

constexpr int FieldGap = 3;    // pixels
constexpr int MoreFactor = 4;  // more hits are wanted when the end of the list is reached
constexpr int MostHits = 5000; // nobody reads further

} // namespace

SearchPane::SearchPane(QWidget* parent)
    : QWidget(parent), m_field(new QLineEdit(this)), m_scope(new SearchScope(this)),
      m_summary(new SearchSummary(this)), m_list(new SearchList(this)), m_model(new SearchModel(this))
{
    m_field->setPlaceholderText(tr("Search all pages"));
    m_field->setAccessibleName(tr("Search all pages"));
    m_field->installEventFilter(this);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new SearchDelegate(m_list));
    setFocusProxy(m_field);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, FieldGap, 0, 0);
    layout->setSpacing(FieldGap);
    layout->addWidget(m_field);
    layout->addWidget(m_scope);
    layout->addWidget(m_summary);
    layout->addWidget(m_list, 1);
    connectField();
    connectList();
    clearHits();
}

void SearchPane::connectField()
{
    connect(m_field, &QLineEdit::textChanged, this, &SearchPane::queryChanged);
    connect(m_field, &QLineEdit::returnPressed, this, &SearchPane::openBest);
    connect(m_scope, &SearchScope::changed, this, [this] {
        searchAgain();
        Q_EMIT scopeChosen(m_scope->choice());
    });
    connect(m_summary, &SearchSummary::nearestRequested, this,
            [this] { m_field->setText(m_answer.nearest); });
    connect(m_summary, &SearchSummary::indexingRequested, this, &SearchPane::indexingRequested);
    connect(m_summary, &SearchSummary::problemsRequested, this, &SearchPane::problemsRequested);
}

void SearchPane::connectList()
{
    connect(m_list, &QAbstractItemView::clicked, this, &SearchPane::open);
    connect(m_list, &SearchList::returnPressed, this, &SearchPane::open);
    connect(m_list, &SearchList::leftUpwards, this, &SearchPane::leaveList);
    connect(m_list, &SearchList::typed, this, [this](QKeyEvent* event) {
        leaveList();
        m_field->end(false);
        QCoreApplication::sendEvent(m_field, event);
    });
    connect(m_list, &SearchList::rowHovered, this,
            [this](const QModelIndex& index) { Q_EMIT linkHovered(m_model->hit(index).page); });
    connect(m_list->verticalScrollBar(), &QScrollBar::valueChanged, this, &SearchPane::wantMore);
}

/// Looking up the icon of the button takes as long as all the panes.
void SearchPane::showEvent(QShowEvent* event)
{
    m_field->setClearButtonEnabled(true);
    QWidget::showEvent(event);
}

void SearchPane::setHelpSets(const QList<SearchChoice>& sets)
{
    m_scope->setHelpSets(sets);
}

void SearchPane::setIndexState(IndexState state, qsizetype unreadable)
{
    m_summary->setIndexState(state, unreadable);
}

void SearchPane::searchIn(const QString& contentsFile)
{
    m_scope->chooseOnly(contentsFile);
}

void SearchPane::setQuery(const QString& query)
{
    m_field->setText(query);
}

void SearchPane::selectQuery()
{
    m_field->selectAll();
}

void SearchPane::queryChanged()
{
    m_request.limit = SearchRequest().limit;
    m_opensAnswer = false;
    searchAgain();
}

void SearchPane::searchAgain()
{
    m_request.query = m_field->text();
    m_request.contentsFiles = m_scope->contentsFiles();
    m_request.languages = QLocale().uiLanguages();
    if (m_request.query.trimmed().isEmpty()) {
        clearHits();
    } else {
        Q_EMIT searchRequested(m_request);
    }
}

void SearchPane::clearHits()
{
    m_answer = {};
    m_model->setHits({});
    m_summary->clearAnswer();
    m_list->setHint(tr("Type words to find the pages that have all of them.\n\n"
                       "\"two words\"  side by side\n"
                       "-word  without it\n"
                       "word*  words that begin so\n"
                       "this OR that  one of them"));
}

bool SearchPane::isAnswered() const
{
    return !m_answer.query.isEmpty() && m_answer.query == m_request.query;
}

void SearchPane::showAnswer(const SearchAnswer& answer)
{
    if (answer.query != m_request.query || answer.query.trimmed().isEmpty()) {
        return; // the user has typed on
    }
    const bool isSameQuery = isAnswered();
    m_answer = answer;
    m_summary->setAnswer(answer);
    m_list->setHint({});
    const QModelIndex current = m_list->currentIndex();
    const QString page = isSameQuery && current.isValid() ? m_model->hit(current).file : QString();
    m_model->setHits(answer.hits);
    if (!isSameQuery) {
        m_list->setCurrentIndex({});
        m_list->scrollToTop();
    } else if (!page.isEmpty() && !m_list->currentIndex().isValid()) {
        m_list->setCurrentIndex(m_model->indexOf(page));
    }
    if (std::exchange(m_opensAnswer, false)) {
        openBest();
    }
}

/// The current page, else the first.
void SearchPane::openBest()
{
    if (!isAnswered()) {
        m_opensAnswer = true;
        return;
    }
    open(m_list->currentIndex().isValid() ? m_list->currentIndex() : m_model->index(0));
}

void SearchPane::open(const QModelIndex& index)
{
    if (index.isValid()) {
        m_list->setCurrentIndex(index);
        // Copied, because showing the page may lead to another answer.
        const SearchHit hit = m_model->hit(index);
        Q_EMIT pageRequested(hit, m_answer.shownQuery());
    }
}

void SearchPane::enterList()
{
    const QModelIndex current = m_list->currentIndex();
    const QModelIndex next = m_model->index(current.isValid() ? current.row() + 1 : 0);
    if (next.isValid()) {
        m_list->setCurrentIndex(next);
    }
    if (m_model->rowCount() > 0) {
        m_list->setFocus(Qt::OtherFocusReason);
    }
}

void SearchPane::leaveList()
{
    m_list->setCurrentIndex({});
    m_field->setFocus(Qt::OtherFocusReason);
}

void SearchPane::wantMore()
{
    const auto* scrollBar = m_list->verticalScrollBar();
    const bool isAtEnd = scrollBar->value() == scrollBar->maximum();
    const qint64 total = m_answer.nearest.isNull() ? m_answer.total : m_answer.nearestTotal;
    if (isAtEnd && isAnswered() && m_model->rowCount() >= m_request.limit && m_model->rowCount() < total &&
        m_request.limit < MostHits) {
        m_request.limit *= MoreFactor;
        Q_EMIT searchRequested(m_request);
    }
}

bool SearchPane::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
        enterList();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
