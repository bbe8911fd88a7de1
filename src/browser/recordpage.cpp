// SPDX-License-Identifier: MIT
#include "browser/recordpage.h"

#include "library/helplibrary.h"
#include "sources/pagefiles.h"

#include <QCoreApplication>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("RecordPage", source);
}

void addFact(BuiltinPage& page, const QString& name, const QString& value)
{
    if (!value.isEmpty()) {
        page.facts.push_back({name, value});
    }
}

void addOrigin(BuiltinPage& page, const QString& helpSet, const NamedBy& namedBy)
{
    addFact(page, text(QT_TRANSLATE_NOOP("RecordPage", "Help set:")), helpSet);
    if (namedBy.file.isNull()) {
        return;
    }
    if (namedBy.line == 0) {
        addFact(page, text(QT_TRANSLATE_NOOP("RecordPage", "Linked from:")), namedBy.file);
    } else {
        addFact(page, text(QT_TRANSLATE_NOOP("RecordPage", "Named in:")),
                text(QT_TRANSLATE_NOOP("RecordPage", "%1, line %2"))
                    .arg(namedBy.file, QString::number(namedBy.line)));
    }
}

QString includeProblem(const HelpLibrary& library, const HelpContentsItem& record)
{
    for (const auto& problem : library.problems()) {
        if (problem.line == record.namedInLine && problem.file == record.source->fileName) {
            return problem.message;
        }
    }
    return text(QT_TRANSLATE_NOOP("RecordPage", "The contents file \"%1\" has no entries."))
        .arg(record.page());
}

RecordPage makeBookPage(const HelpLibrary& library, const HelpContentsItem& record)
{
    RecordPage result;
    const auto& row = *record.listViewItem;
    result.page.title = row.text.toString();
    for (const auto* child : row.children) {
        result.page.links.push_back(
            {child->text.isEmpty() ? child->contentsItem->page() : child->text.toString(), {}});
        result.targets.emplace_back(child->contentsItem);
    }
    if (!row.children.empty()) {
        return result;
    }
    result.page.text =
        record.target == EntryTarget::Contents
            ? includeProblem(library, record)
            : text(QT_TRANSLATE_NOOP("RecordPage", "The contents name no page for this entry."));
    addOrigin(result.page, record.title(), {record.source->fileName, record.namedInLine});
    return result;
}

RecordPage makeKeywordPage(const HelpLibrary& library, const HelpContentsItem& record)
{
    RecordPage result;
    const auto& index = library.keywordIndex();
    result.page.title = record.keyword->keyword.toString();
    for (const auto* row : index.subKeywords(*record.keyword)) {
        const auto topics = index.topics(row->indexItem);
        for (auto* topic : topics) {
            const QString place = topic->hasPage() ? library.pageTitle(topic->link()) : QString();
            result.page.links.push_back({topic->keyword.toString(), topics.size() > 1 ? place : QString()});
            result.targets.emplace_back(topic);
        }
    }
    if (result.targets.empty()) {
        result.page.text = text(
            QT_TRANSLATE_NOOP("RecordPage", "The index names no page and no sub-keywords for this keyword."));
        addOrigin(result.page, record.title(), {record.source->fileName, record.namedInLine});
    }
    return result;
}

} // namespace

QString pageOf(const RecordLink& link)
{
    if (auto* const* item = std::get_if<HelpContentsItem*>(&link)) {
        return (*item)->page();
    }
    auto* const* keyword = std::get_if<HelpIndexItem*>(&link);
    return keyword != nullptr ? (*keyword)->link() : std::get_if<ClosedHelpSet>(&link)->page;
}

RecordPage makeRecordPage(const HelpLibrary& library, const HelpContentsItem& record)
{
    return record.keyword != nullptr ? makeKeywordPage(library, record) : makeBookPage(library, record);
}

RecordPage makeClosedPage(const ClosedHelpSet& closed, const NamedBy& namedBy)
{
    RecordPage result;
    auto& page = result.page;
    page.title = text(QT_TRANSLATE_NOOP("RecordPage", "This page is in a help set that is not open"));
    page.text = text(QT_TRANSLATE_NOOP("RecordPage", "The help set is on this machine and can be opened."));
    const QString title = HelpLibrary::getTitle(closed.fileName);
    page.links.push_back({text(QT_TRANSLATE_NOOP("RecordPage", "Open \"%1\"")).arg(title), {}});
    addFact(page, text(QT_TRANSLATE_NOOP("RecordPage", "Page:")), readablePageName(closed.page));
    addFact(page, text(QT_TRANSLATE_NOOP("RecordPage", "File:")), closed.fileName);
    addOrigin(page, {}, namedBy);
    result.targets.emplace_back(closed);
    return result;
}

BuiltinPage makeErrorPage(const QString& name, const QString& reason, const QString& helpSet,
                          const NamedBy& namedBy)
{
    BuiltinPage page;
    page.title = text(QT_TRANSLATE_NOOP("RecordPage", "This page cannot be shown"));
    page.text = reason;
    addFact(page, text(QT_TRANSLATE_NOOP("RecordPage", "Page:")), readablePageName(name));
    addOrigin(page, helpSet, namedBy);
    return page;
}
