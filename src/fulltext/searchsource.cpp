// SPDX-License-Identifier: MIT
#include "fulltext/searchsource.h"

void SearchSource::reserve(size_t topics, size_t keywords, qsizetype text)
{
    m_topics.reserve(topics);
    m_keywords.reserve(keywords);
    m_text.reserve(text);
}

void SearchSource::addTopic(QStringView directory, QStringView name, QStringView title, int level)
{
    // Those of one folder nearly always follow each other.
    const bool isNew = !directory.isEmpty() && (m_folders.isEmpty() || m_folders.constLast() != directory) &&
                       !m_folders.contains(directory);
    if (isNew && m_folders.size() < MostFolders) {
        m_folders.append(directory.toString());
    }
    m_topics.push_back(add(directory, name, title, level));
}

void SearchSource::addKeyword(QStringView directory, QStringView name, QStringView keyword)
{
    m_keywords.push_back(add(directory, name, keyword, 0));
}

SearchSource::Entry SearchSource::add(QStringView directory, QStringView name, QStringView title, int level)
{
    const Entry entry{m_text.size(), int(directory.size() + name.size()), int(title.size()), level};
    m_text.append(directory).append(name).append(title);
    return entry;
}
