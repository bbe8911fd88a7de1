// SPDX-License-Identifier: MIT
#include "sources/outlinebuilder.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

OutlineBuilder::OutlineBuilder(const QString& file, const QString& directory)
{
    m_outline.files.push_back(file);
    m_outline.directories.push_back(directory);
    m_outline.readable = true;
}

void OutlineBuilder::setTitle(const QString& title)
{
    m_outline.title = m_outline.ownTitle = title.isNull() ? QStringLiteral("") : title;
    m_outline.titles.assign(1, m_outline.title);
}

bool OutlineBuilder::add(int level, QStringView title, QStringView page, int line)
{
    if (m_outline.entries.size() >= MaximumRows) {
        if (m_outline.limitReached.isNull()) {
            m_outline.limitReached =
                QCoreApplication::translate("OutlineBuilder", "More than %1 entries; the rest is not read")
                    .arg(MaximumRows);
            note(Problem::Severity::Error, m_outline.limitReached, line);
        }
        return false;
    }
    const auto depth = size_t(std::clamp(level, 0, int(std::min<size_t>(m_path.size(), MaximumLevel))));
    const int row = int(m_outline.entries.size());
    OutlineEntry entry;
    entry.title = keep(title);
    entry.page = keep(page);
    entry.helpSet = m_outline.titles.empty() ? -1 : 0;
    entry.line = line;
    entry.target = page.isEmpty() ? EntryTarget::Nothing : EntryTarget::Page;
    entry.parent = depth == 0 ? -1 : m_path[depth - 1];
    if (depth < m_path.size()) {
        m_outline.entries[size_t(m_path[depth])].nextSibling = row;
    } else if (depth > 0) {
        m_outline.entries[size_t(m_path[depth - 1])].firstChild = row;
    } else {
        m_outline.firstTop = row;
    }
    m_path.resize(depth);
    m_path.push_back(row);
    m_outline.entries.push_back(entry);
    if (m_outline.firstPage < 0 && entry.target == EntryTarget::Page) {
        m_outline.firstPage = row;
    }
    return true;
}

void OutlineBuilder::note(Problem::Severity severity, const QString& message, int line)
{
    m_outline.problems.push_back({m_outline.files.front(), line, severity, message});
}

ContentsOutline OutlineBuilder::take()
{
    return std::exchange(m_outline, {});
}

/// Texts stand one behind the other in a few large ones, which never grow beyond their room.
QStringView OutlineBuilder::keep(QStringView text)
{
    constexpr qsizetype block = 1 << 16; // characters
    auto& texts = m_outline.texts;
    if (texts.empty() || texts.back().capacity() - texts.back().size() < text.size()) {
        texts.emplace_back().reserve(std::max(block, text.size()));
    }
    const qsizetype begin = texts.back().size();
    texts.back().append(text);
    return QStringView(texts.back()).sliced(begin);
}
