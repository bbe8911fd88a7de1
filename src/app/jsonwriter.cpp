// SPDX-License-Identifier: MIT
#include "app/jsonwriter.h"

namespace {

constexpr size_t BufferSize = 1 << 16; // bytes

void appendEscape(std::string& out, char16_t unit)
{
    static constexpr std::string_view digits = "0123456789abcdef";
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        out += digits[(unit >> unsigned(shift)) & 0xFU];
    }
}

} // namespace

JsonWriter::~JsonWriter()
{
    m_buffer += '\n';
    flush();
    std::fflush(m_stream);
}

void JsonWriter::begin(char open, char close)
{
    separate();
    m_buffer += open;
    m_open.push_back(close);
    m_needsComma = false;
}

void JsonWriter::end()
{
    m_buffer += m_open.back();
    m_open.pop_back();
    m_needsComma = true;
    if (m_buffer.size() > BufferSize) {
        flush();
    }
}

void JsonWriter::key(const char* name)
{
    separate();
    m_buffer += '"';
    m_buffer += name;
    m_buffer += "\":";
    m_needsComma = false;
}

void JsonWriter::value(const QString& text)
{
    separate();
    if (text.isNull()) {
        m_buffer += "null";
    } else {
        writeString(text);
    }
}

void JsonWriter::value(int number)
{
    separate();
    m_buffer += std::to_string(number);
}

void JsonWriter::separate()
{
    if (m_needsComma) {
        m_buffer += ',';
    }
    m_needsComma = true;
}

void JsonWriter::writeString(const QString& text)
{
    m_buffer += '"';
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'"' || c == u'\\') {
            m_buffer += '\\';
            m_buffer += char(c.unicode());
        } else if (c.unicode() < 0x20 || c.unicode() == 0x7F) {
            appendEscape(m_buffer, c.unicode());
        } else if (c.unicode() < 0x7F) {
            m_buffer += char(c.unicode());
        } else if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            m_buffer += QStringView(text).sliced(i++, 2).toUtf8().toStdString();
        } else if (c.isSurrogate() || (c.unicode() >= 0x80 && c.unicode() < 0xA0)) {
            // A lone surrogate has no UTF-8 form; C1 controls could act on a terminal.
            appendEscape(m_buffer, c.unicode());
        } else {
            m_buffer += QStringView(&c, 1).toUtf8().toStdString();
        }
    }
    m_buffer += '"';
}

void JsonWriter::flush()
{
    std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_stream);
    m_buffer.clear();
}
