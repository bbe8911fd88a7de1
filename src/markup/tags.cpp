// SPDX-License-Identifier: MIT
#include "markup/tags.h"

void appendEscaped(std::string& html, std::string_view text)
{
    size_t written = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const char* escape = c == '<'   ? "&lt;"
                             : c == '>' ? "&gt;"
                             : c == '&' ? "&amp;"
                             : c == '"' ? "&quot;"
                                        : nullptr;
        if (escape != nullptr) {
            html.append(text, written, i - written).append(escape);
            written = i + 1;
        }
    }
    html.append(text, written);
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
