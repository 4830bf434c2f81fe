#include "storage/code_page.h"

#include <algorithm>
#include <array>

namespace orvane {

namespace {

// Bytes 0x80 to 0x9F. All others stand for the code point of the same number.
constexpr unsigned char firstSpecial = 0x80;
constexpr std::array<char16_t, 32> specialCodePoints = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80 to 87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88 to 8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90 to 97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98 to 9F
};

bool IsSpecial(char32_t number) {
    return number >= firstSpecial && number < firstSpecial + specialCodePoints.size();
}

void AppendUtf8(std::string& utf8, char32_t codePoint) {
    // No character of the code page needs more than three bytes.
    if (codePoint < 0x80) {
        utf8 += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        utf8 += static_cast<char>(0xC0 | codePoint >> 6);
        utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        utf8 += static_cast<char>(0xE0 | codePoint >> 12);
        utf8 += static_cast<char>(0x80 | (codePoint >> 6 & 0x3F));
        utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

// What a first byte announces: how many bytes follow it, its share of the code point, and the
// smallest code point that needs so many.
struct Announced {
    std::size_t followers;
    char32_t bits;
    char32_t smallest;
};
std::optional<Announced> AnnouncedBy(unsigned char first) {
    if (first < 0x80) return Announced{0, first, 0};
    if (first < 0xC0) return std::nullopt;
    if (first < 0xE0) return Announced{1, first & 0x1FU, 0x80};
    if (first < 0xF0) return Announced{2, first & 0x0FU, 0x800};
    if (first < 0xF8) return Announced{3, first & 0x07U, 0x10000};
    return std::nullopt;
}

struct Utf8Piece {
    std::optional<char32_t> codePoint;  // nothing for a malformed piece
    std::size_t length;                 // in bytes
};

// The character or the malformed piece at `start`: a first byte with as many of the announced ones
// as there are, or one byte that can't be a first one.
Utf8Piece PieceAt(std::string_view utf8, std::size_t start) {
    const std::optional<Announced> announced = AnnouncedBy(static_cast<unsigned char>(utf8[start]));
    if (!announced) return {std::nullopt, 1};
    char32_t codePoint = announced->bits;
    for (std::size_t count = 1; count <= announced->followers; ++count) {
        const std::size_t at = start + count;
        const bool follows = at < utf8.size() && (utf8[at] & 0xC0) == 0x80;
        if (!follows) return {std::nullopt, count};
        codePoint = codePoint << 6 | (utf8[at] & 0x3F);
    }
    const std::size_t length = announced->followers + 1;
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    const bool isCharacter =
        codePoint >= announced->smallest && codePoint <= 0x10FFFF && !isSurrogate;
    return {isCharacter ? std::optional(codePoint) : std::nullopt, length};
}

}  // namespace

char32_t CodePointOf(char byte) {
    const auto number = static_cast<unsigned char>(byte);
    return IsSpecial(number) ? specialCodePoints[number - firstSpecial] : number;
}

std::optional<char> ByteOf(char32_t codePoint) {
    if (codePoint <= 0xFF && !IsSpecial(codePoint)) return static_cast<char>(codePoint);
    const auto found = std::find(specialCodePoints.begin(), specialCodePoints.end(), codePoint);
    if (found == specialCodePoints.end()) return std::nullopt;
    return static_cast<char>(firstSpecial + (found - specialCodePoints.begin()));
}

std::string Utf8FromBytes(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    for (const char byte : bytes) AppendUtf8(utf8, CodePointOf(byte));
    return utf8;
}

PageText BytesFromUtf8(std::string_view utf8) {
    PageText text;
    text.bytes.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const Utf8Piece piece = PieceAt(utf8, at);
        const std::optional<char> byte =
            piece.codePoint ? ByteOf(*piece.codePoint) : std::optional<char>();
        if (!byte && text.outside++ == 0) {
            text.firstOutside = utf8.substr(at, piece.length);
            text.firstCodePoint = piece.codePoint;
        }
        text.bytes += byte.value_or('?');
        at += piece.length;
    }
    return text;
}

}  // namespace orvane
