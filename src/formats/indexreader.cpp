// SPDX-License-Identifier: MIT
#include "formats/indexreader.h"

bool IndexReader::next()
{
    QStringView trimmed;
    while (trimmed.isEmpty()) {
        if (!m_lines.next()) {
            return false;
        }
        trimmed = m_lines.trimmed();
    }
    ++m_position;
    const QChar first = m_lines.line().front();
    const bool isSubKeyword = first == u' ' || first == u'\t';
    if (!isSubKeyword) {
        m_lastKeyword = m_position;
    }
    const qsizetype equals = trimmed.indexOf(u'=');
    m_line.keyword = equals < 0 ? trimmed : trimmed.first(equals).trimmed();
    m_line.page = equals < 0 ? QStringView() : trimmed.sliced(equals + 1).trimmed();
    m_line.parent = isSubKeyword ? m_lastKeyword : -1;
    m_line.line = m_lines.number();
    m_line.isCut = m_lines.isCut();
    return true;
}
