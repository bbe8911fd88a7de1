// SPDX-License-Identifier: MIT
#include "pages/markup.h"

#include <algorithm>

void appendEscaped(std::string& html, std::string_view text)
{
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find_first_of("<>&\"", begin), text.size());
        html += text.substr(begin, end - begin);
        if (end < text.size()) {
            const char c = text[end];
            html += c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '&' ? "&amp;" : "&quot;";
        }
        begin = end + 1;
    }
}

std::string attributeText(std::string_view name, std::string_view value)
{
    std::string text(1, ' ');
    text.append(name).append("=\"");
    appendEscaped(text, value);
    return text.append(1, '"');
}

std::string startTag(std::string_view name, std::string_view attributes)
{
    return std::string(1, '<').append(name).append(attributes).append(1, '>');
}

std::string endTag(std::string_view name)
{
    return std::string("</").append(name).append(1, '>');
}
