#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "storage/archive.h"

// Archive bytes as tests write them down: '<' is a name mark, '>' a text mark and '#' a NUL.

namespace orvane::test {

inline std::string Marked(std::string_view shown) {
    std::string bytes(shown);
    std::replace(bytes.begin(), bytes.end(), '<', nameMark);
    std::replace(bytes.begin(), bytes.end(), '>', textMark);
    std::replace(bytes.begin(), bytes.end(), '#', '\0');
    return bytes;
}

// The other way, so that a difference can be read.
inline std::string Shown(std::string_view bytes) {
    std::string shown(bytes);
    std::replace(shown.begin(), shown.end(), nameMark, '<');
    std::replace(shown.begin(), shown.end(), textMark, '>');
    std::replace(shown.begin(), shown.end(), '\0', '#');
    return shown;
}

inline TextBuffer BufferOf(std::string_view bytes) {
    TextBuffer buffer;
    buffer.Assign(bytes);
    return buffer;
}

}  // namespace orvane::test
