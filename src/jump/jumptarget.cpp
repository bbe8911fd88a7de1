// SPDX-License-Identifier: MIT
#include "jump/jumptarget.h"

#include "library/helplibrary.h"
#include "library/helpset.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("JumpTarget", text);
}

/// "Help set › Book › Book" of a row.
QString bookOf(const HelpContentsListViewItem& row, const HelpLibrary& library)
{
    QStringList parts;
    for (const auto* parent = row.parent; parent != nullptr; parent = parent->parent) {
        parts.prepend(parent->text.toString().simplified());
    }
    if (const auto* root = row.contentsItem->root()) {
        parts.prepend(library.helpSet(*root).ownTitle());
    }
    return parts.join(QStringLiteral(" › "));
}

QString topicOf(const HelpIndexItem& keyword, HelpLibrary& library)
{
    const int topics = library.keywordIndex().getIndexByGroupCount(keyword.group);
    if (topics > 1) {
        return QCoreApplication::translate("JumpTarget", "%n topic(s)", nullptr, topics);
    }
    const QString set = keyword.title();
    const QString page = keyword.hasPage() ? library.pageTitle(keyword.link()) : QString();
    return page.isEmpty() || page == keyword.keyword ? set : set + QStringLiteral(" › ") + page;
}

} // namespace

QString jumpTargetPlace(const JumpTarget& target, HelpLibrary& library)
{
    switch (target.kind) {
    case JumpTarget::Kind::Read:
        return target.row == nullptr
                   ? translated("Read lately")
                   : translated("Read lately") + QStringLiteral(" · ") + bookOf(*target.row, library);
    case JumpTarget::Kind::Heading:
        return translated("On this page");
    case JumpTarget::Kind::Row:
        return bookOf(*target.row, library);
    case JumpTarget::Kind::Keyword: {
        const QString parent = target.keyword->parent() == nullptr
                                   ? QString()
                                   : target.keyword->parent()->keyword.toString() + QStringLiteral(" › ");
        return translated("Keyword") + QStringLiteral(" · ") + parent + topicOf(*target.keyword, library);
    }
    }
    return {};
}
