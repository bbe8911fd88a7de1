// SPDX-License-Identifier: MIT
#include "markup/htmlstore.h"

#include <algorithm>

namespace {

constexpr size_t BlockSize = 16384; // bytes

}

std::string_view HtmlStore::keep(std::string_view text)
{
    if (text.size() > m_freeSize) {
        m_freeSize = std::max(BlockSize, text.size());
        m_blocks.emplace_back(new char[m_freeSize]);
        m_free = m_blocks.back().get();
    }
    char* const begin = m_free;
    std::copy(text.begin(), text.end(), begin);
    m_free += text.size();
    m_freeSize -= text.size();
    return {begin, text.size()};
}
