// SPDX-License-Identifier: MIT
#include "mainwindow/outlinemenu.h"

#include <algorithm>

namespace {

constexpr qsizetype LongestTitle = 70; // characters
constexpr qsizetype IndentWidth = 4;   // blanks for each level

/// The lowest level of heading that can be shown without having too many of them.
int lowestLevel(const std::vector<PageHeading>& headings)
{
    int level = 6;
    const auto isShown = [&level](const PageHeading& heading) { return heading.level <= level; };
    while (level > 1 &&
           size_t(std::count_if(headings.begin(), headings.end(), isShown)) > OutlineMenu::MaximumEntries) {
        --level;
    }
    return level;
}

QString plainTitle(const PageHeading& heading, int topLevel)
{
    QString title =
        heading.text.size() > LongestTitle ? heading.text.first(LongestTitle - 1) + u'…' : heading.text;
    return QString(IndentWidth * (heading.level - topLevel), u' ') +
           title.replace(u'&', QStringLiteral("&&"));
}

} // namespace

OutlineMenu::OutlineMenu(const QString& title, QWidget* parent) : QMenu(title, parent)
{
    setObjectName(QStringLiteral("outlineMenu"));
    setEnabled(false);
    connect(this, &QMenu::aboutToShow, this, &OutlineMenu::fill);
}

void OutlineMenu::setHeadings(const std::vector<PageHeading>& headings)
{
    m_headings = headings;
    clear();
    setEnabled(!headings.empty());
}

void OutlineMenu::fill()
{
    if (!isEmpty() || m_headings.empty()) {
        return;
    }
    const int lowest = lowestLevel(m_headings);
    const int top = std::min_element(m_headings.begin(), m_headings.end(), [](const auto& a, const auto& b) {
                        return a.level < b.level;
                    })->level;
    size_t count = 0;
    for (const auto& heading : m_headings) {
        if (heading.level <= lowest && !heading.text.isEmpty() && ++count <= MaximumEntries) {
            addAction(plainTitle(heading, top), this,
                      [this, anchor = heading.anchor] { Q_EMIT chosen(anchor); });
        }
    }
}
