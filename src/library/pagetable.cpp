// SPDX-License-Identifier: MIT
#include "library/pagetable.h"

#include "formats/paths.h"

namespace {

/// Of a text that is given in pieces (FNV-1a).
class TextHash {
public:
    TextHash& add(QStringView text)
    {
        for (const QChar c : text) {
            m_value = (m_value ^ c.unicode()) * 0x100000001B3U;
        }
        return *this;
    }
    [[nodiscard]] quint32 value() const { return quint32(m_value ^ (m_value >> 32U)); }

private:
    quint64 m_value = 0xCBF29CE484222325U;
};

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

quint32 hashOf(const HelpContentsItem& record)
{
    return isClean(record.pageName) ? TextHash().add(record.source->directory).add(record.pageName).value()
                                    : TextHash().add(pathOf(record)).value();
}

} // namespace

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
