// SPDX-License-Identifier: MIT
#include "app/jsonwriter.h"

namespace {

constexpr size_t BufferSize = 1 << 16; // bytes

/// Control characters could act on a terminal.
bool isControl(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

/// Also for lone surrogates, which have no UTF-8 form.
void appendEscape(std::string& out, char16_t unit)
{
    static constexpr std::string_view digits = "0123456789abcdef";
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        out += digits[(unit >> unsigned(shift)) & 0xFU];
    }
}

} // namespace

bool JsonWriter::finish()
{
    m_buffer += '\n';
    flush();
    return std::fflush(m_stream) == 0 && std::ferror(m_stream) == 0;
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

void JsonWriter::value(double number)
{
    separate();
    m_buffer += QByteArray::number(number, 'f', 3).toStdString();
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
        const char16_t unit = text.at(i).unicode();
        const bool isPair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (unit == u'"' || unit == u'\\') {
            m_buffer += '\\';
            m_buffer += char(unit);
        } else if (isControl(unit) || (text.at(i).isSurrogate() && !isPair)) {
            appendEscape(m_buffer, unit);
        } else if (unit < 0x80) {
            m_buffer += char(unit);
        } else {
            m_buffer += QStringView(text).sliced(i, isPair ? 2 : 1).toUtf8().toStdString();
            i += isPair ? 1 : 0;
        }
    }
    m_buffer += '"';
}

void JsonWriter::flush()
{
    std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_stream);
    m_buffer.clear();
}
