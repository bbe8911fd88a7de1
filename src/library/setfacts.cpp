// SPDX-License-Identifier: MIT
#include "library/setfacts.h"

#include "library/helplibrary.h"
#include "sources/sources.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

QString firstError(const ContentsOutline& outline)
{
    const auto error =
        std::find_if(outline.problems.begin(), outline.problems.end(),
                     [](const Problem& problem) { return problem.severity == Problem::Severity::Error; });
    if (error == outline.problems.end()) {
        return {};
    }
    return error->line > 0 ? QCoreApplication::translate("SetFacts", "%1, line %2: %3")
                                 .arg(error->file)
                                 .arg(error->line)
                                 .arg(error->message)
                           : error->file + QStringLiteral(": ") + error->message;
}

} // namespace

SetFacts factsOf(const QString& fileName, const std::stop_token& stop)
{
    SetFacts facts;
    facts.title = fileName;
    if (const auto refusal = HelpLibrary::refusalOf(fileName)) {
        facts.trouble = refusal->reason;
        return facts;
    }
    const auto outline = openSource(fileName)->readContents(stop);
    if (stop.stop_requested()) {
        return facts;
    }
    facts.canBeOpened = true;
    facts.title = outline.ownTitle.isEmpty() ? fileName : outline.ownTitle;
    facts.topics = int(outline.entries.size());
    facts.trouble = firstError(outline);
    return facts;
}
