// SPDX-License-Identifier: MIT
#include "fulltext/searchservice.h"

struct SearchService::Private {};

SearchService::SearchService(QObject* parent) : QObject(parent), d(std::make_unique<Private>())
{
}

SearchService::~SearchService() = default;

void SearchService::addHelpSet(const SearchSource& source)
{
    Q_EMIT indexed(source.contentsFile(), {});
}

void SearchService::removeHelpSet(const QString& /*contentsFile*/)
{
}

void SearchService::search(const SearchRequest& request)
{
    SearchAnswer answer;
    answer.query = request.query;
    QMetaObject::invokeMethod(
        this, [this, answer] { Q_EMIT answered(answer); }, Qt::QueuedConnection);
}

void SearchService::cancelIndexing()
{
}

bool SearchService::isIndexing() const
{
    return false;
}
