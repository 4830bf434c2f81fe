#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Sheets, names and settings are bytes of Windows-1252 on every platform. This is the one table
// between them and Unicode; it is used only where text enters or leaves the program. Every byte
// stands for a character of its own (the five that the code page leaves open stand for the control
// characters of the same number), so a text survives the way out and back.

namespace orvane {

char32_t CodePointOf(char byte);
// Nothing for a character outside the code page.
std::optional<char> ByteOf(char32_t codePoint);

std::string Utf8FromBytes(std::string_view bytes);

// Characters outside the code page become '?', and so does each malformed piece of UTF-8: an
// overlong form, a surrogate, a number beyond U+10FFFF, a sequence that breaks off, or a byte that
// can't start one.
struct PageText {
    std::string bytes;
    std::size_t outside = 0;                 // how many became '?'
    std::string firstOutside;                // the first of them as it was written
    std::optional<char32_t> firstCodePoint;  // nothing where that one is malformed
};
PageText BytesFromUtf8(std::string_view utf8);

}  // namespace orvane
