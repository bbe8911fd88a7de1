// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdio>
#include <string>
#include <vector>

/// Writes JSON to a stream as it is told, in UTF-8, so that neither the depth nor the size of a document is
/// limited by memory.
class JsonWriter {
public:
    explicit JsonWriter(std::FILE* stream) : m_stream(stream) {}

    void beginObject() { begin('{', '}'); }
    void beginArray() { begin('[', ']'); }
    /// Ends the innermost object or array.
    void end();
    void key(const char* name);
    /// A null string is written as null.
    void value(const QString& text);
    void value(int number);
    /// With three decimals at most.
    void value(double number);
    /// Call it last; false when not everything could be written.
    [[nodiscard]] bool finish();

private:
    void begin(char open, char close);
    void separate();
    void writeString(const QString& text);
    void flush();

    std::FILE* m_stream;
    std::string m_buffer;
    std::vector<char> m_open; ///< closing brackets of what is open
    bool m_needsComma = false;
};
