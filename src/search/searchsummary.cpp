// SPDX-License-Identifier: MIT
#include "search/searchsummary.h"

#include <QEvent>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace {

constexpr int SideMargin = 2;               // pixels
constexpr qsizetype LongestQueryShown = 60; // characters

QString link(const char* name, const QString& html)
{
    return QStringLiteral("<a href=\"%1\">%2</a>").arg(QLatin1StringView(name), html);
}

QString queryHtml(const QString& query)
{
    const QString text = query.simplified();
    return (text.size() > LongestQueryShown ? text.first(LongestQueryShown) + u'…' : text).toHtmlEscaped();
}

QString pages(qint64 count)
{
    return count == 1 ? SearchSummary::tr("1 page")
                      : SearchSummary::tr("%1 pages").arg(QLocale().toString(count));
}

/// What a dash was taken for.
QString readingHtml(const SearchAnswer& answer)
{
    if (!answer.options.isEmpty()) {
        const QString option = answer.options.constFirst();
        return QStringLiteral("<br>") +
               SearchSummary::tr("“%1” is taken for an option; -\"%2\" leaves out pages with the word.")
                   .arg(option.toHtmlEscaped(), option.sliced(1).toHtmlEscaped());
    }
    return answer.excluded.isEmpty()
               ? QString()
               : QStringLiteral("<br>") + SearchSummary::tr("Pages with “%1” are left out.")
                                              .arg(answer.excluded.join(u", ").toHtmlEscaped());
}

QString foundHtml(const SearchAnswer& answer)
{
    if (answer.total > 0) {
        const auto time = std::max<qint64>(1, std::llround(answer.milliseconds));
        return SearchSummary::tr("%1, %2 ms").arg(pages(answer.total), QLocale().toString(time)) +
               readingHtml(answer);
    }
    QString none = SearchSummary::tr("No page has “%1”.").arg(queryHtml(answer.query));
    if (answer.nearest.isNull()) {
        return none;
    }
    return none + u' ' +
           SearchSummary::tr("These have “%1” (%2):")
               .arg(link("nearest", queryHtml(answer.nearest)), pages(answer.nearestTotal));
}

} // namespace

SearchSummary::SearchSummary(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::RichText);
    setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    setWordWrap(true);
    setContentsMargins(SideMargin, 0, SideMargin, 0);
    // A long word must not keep the pane from being narrow.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    connect(this, &QLabel::linkActivated, this, [this](const QString& name) {
        if (name == u"nearest") {
            Q_EMIT nearestRequested();
        } else if (name == u"index") {
            Q_EMIT indexingRequested();
        } else {
            Q_EMIT problemsRequested();
        }
    });
    renew();
}

void SearchSummary::setIndexState(IndexState state, qsizetype unreadable)
{
    m_state = state;
    m_unreadable = unreadable;
    renew();
}

void SearchSummary::setAnswer(const SearchAnswer& answer)
{
    m_found = foundHtml(answer);
    renew();
}

void SearchSummary::clearAnswer()
{
    m_found.clear();
    renew();
}

void SearchSummary::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        renew();
    }
}

void SearchSummary::renew()
{
    QStringList sentences;
    if (m_state == IndexState::UnderWay) {
        sentences += tr("Pages are still being indexed.");
    } else if (m_state == IndexState::Stopped) {
        sentences += tr("Not all pages are indexed. %1").arg(link("index", tr("Continue")));
    }
    if (m_unreadable > 0) {
        sentences += link("problems", tr("%1 could not be read").arg(pages(m_unreadable)));
    }
    if (!m_found.isEmpty()) {
        sentences.append(m_found);
    }
    QString html = sentences.join(QStringLiteral("<br>"));
    // The desktop's colour of links is for pages; on the window it may not be readable.
    const QString color = palette().color(QPalette::WindowText).name();
    setText(html.replace(QStringLiteral("<a "), QStringLiteral("<a style=\"color:%1\" ").arg(color)));
    setVisible(!html.isEmpty());
    setFocusPolicy(html.contains(u"<a ") ? Qt::TabFocus : Qt::NoFocus);
}
