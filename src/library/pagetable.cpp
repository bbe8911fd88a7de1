// SPDX-License-Identifier: MIT
#include "library/pagetable.h"

#include "formats/paths.h"

namespace {

/// Whether a directory's absolute path followed by the name is an absolute path as it stands.
bool isClean(QStringView pageName)
{
    QChar previous = u'/';
    for (const QChar c : pageName) {
        if (previous == u'/' && (c == u'/' || c == u'.')) {
            return false;
        }
        previous = c;
    }
    return true;
}

QString pathOf(const HelpContentsItem& record)
{
    return absoluteFilePath(record.page());
}

} // namespace

quint32 PageTable::hashOf(const HelpContentsItem& record)
{
    if (!isClean(record.pageName)) {
        return TextHash().add(pathOf(record)).value();
    }
    if (m_source != record.source) {
        m_source = record.source;
        m_directoryHash = TextHash().add(m_source->directory);
    }
    return TextHash(m_directoryHash).add(record.pageName).value();
}

void PageTable::insert(const HelpContentsItem& record)
{
    m_table.findOrInsert(hashOf(record), quint32(&record - m_records.data()), [&](quint32 other) {
        const auto& entered = m_records[other];
        return (entered.pageName == record.pageName &&
                entered.source->directory == record.source->directory) ||
               pathOf(entered) == pathOf(record);
    });
}

HelpContentsItem* PageTable::find(const QString& path) const
{
    const quint32 found = m_table.find(TextHash().add(path).value(),
                                       [&](quint32 position) { return pathOf(m_records[position]) == path; });
    return found == PositionTable::None ? nullptr : &m_records[found];
}
