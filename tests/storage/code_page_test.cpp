#include "storage/code_page.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace orvane {
namespace {

using namespace std::string_view_literals;

// Bytes 0x80 to 0x9F as the Unicode consortium's table for Windows-1252 has them, the five open
// ones as control characters.
constexpr std::u32string_view fromByte80 =
    U"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D\u017D\x8F"
    U"\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\x9D\u017E\u0178"sv;

char32_t ExpectedCodePoint(int byte) {
    if (byte < 0x80 || byte > 0x9F) return static_cast<char32_t>(byte);
    return fromByte80[static_cast<std::size_t>(byte - 0x80)];
}

// Any number up to 0x1FFFFF in the shortest form, also where it is no character.
std::string Encoded(char32_t codePoint) {
    const auto part = [codePoint](int shift) {
        return static_cast<char>(0x80 | (codePoint >> shift & 0x3F));
    };
    if (codePoint < 0x80) return {static_cast<char>(codePoint)};
    if (codePoint < 0x800) return {static_cast<char>(0xC0 | codePoint >> 6), part(0)};
    if (codePoint < 0x10000) return {static_cast<char>(0xE0 | codePoint >> 12), part(6), part(0)};
    return {static_cast<char>(0xF0 | codePoint >> 18), part(12), part(6), part(0)};
}

std::string AllBytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    return bytes;
}

TEST(CodePage, GivesEveryByteItsCharacter) {
    ASSERT_EQ(fromByte80.size(), 32U);
    std::set<char32_t> seen;
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const char32_t codePoint = CodePointOf(static_cast<char>(byte));
        EXPECT_EQ(codePoint, ExpectedCodePoint(byte));
        EXPECT_TRUE(seen.insert(codePoint).second);
        EXPECT_EQ(ByteOf(codePoint), static_cast<char>(byte));
    }
}

TEST(CodePage, HasAByteForNoOtherNumber) {
    std::set<char32_t> inside;
    for (int byte = 0; byte < 256; ++byte) inside.insert(ExpectedCodePoint(byte));
    for (char32_t codePoint = 0; codePoint <= 0x110000; ++codePoint) {
        ASSERT_EQ(ByteOf(codePoint).has_value(), inside.count(codePoint) == 1)
            << std::uint32_t{codePoint};
    }
    EXPECT_FALSE(ByteOf(0xFFFFFFFF));
}

TEST(Utf8FromBytes, WritesEachByteAsItsCharacter) {
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        EXPECT_EQ(Utf8FromBytes(std::string(1, static_cast<char>(byte))),
                  Encoded(ExpectedCodePoint(byte)));
    }
    EXPECT_EQ(Utf8FromBytes("a\x80\xE4\0z"sv), "a\xE2\x82\xAC\xC3\xA4\0z"sv);
    EXPECT_EQ(Utf8FromBytes(""), "");
}

TEST(BytesFromUtf8, TakesBackAllBytes) {
    const std::string bytes = AllBytes();
    const PageText text = BytesFromUtf8(Utf8FromBytes(bytes));
    EXPECT_EQ(text.bytes, bytes);
    EXPECT_EQ(text.outside, 0U);
    EXPECT_EQ(text.firstOutside, "");
}

TEST(BytesFromUtf8, PutsAQuestionMarkForEveryCharacterOutside) {
    std::set<char32_t> inside;
    for (int byte = 0; byte < 256; ++byte) inside.insert(ExpectedCodePoint(byte));
    for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
        if (inside.count(codePoint) == 1 || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) continue;
        const std::string utf8 = Encoded(codePoint);
        const PageText text = BytesFromUtf8(utf8);
        ASSERT_EQ(text.bytes, "?") << std::uint32_t{codePoint};
        ASSERT_EQ(text.outside, 1U) << std::uint32_t{codePoint};
        ASSERT_EQ(text.firstOutside, utf8) << std::uint32_t{codePoint};
        ASSERT_EQ(text.firstCodePoint, codePoint);
    }
}

struct MalformedRow {
    std::string_view utf8;
    std::string_view bytes;
    std::string_view firstOutside;
};
const MalformedRow malformedRows[] = {
    // Bytes that can't start a character, one piece each.
    {"\x80", "?", "\x80"},
    {"a\xBF\x80z", "a??z", "\xBF"},
    {"\xF8\x88\x80\x80\x80", "?????", "\xF8"},
    {"\xFE\xFF", "??", "\xFE"},
    // Overlong forms, also of the smallest and the largest that need one byte less.
    {"\xC0\x80", "?", "\xC0\x80"},
    {"\xC1\xBFz", "?z", "\xC1\xBF"},
    {"\xE0\x80\x80", "?", "\xE0\x80\x80"},
    {"\xE0\x9F\xBF", "?", "\xE0\x9F\xBF"},
    {"\xF0\x80\x80\x80", "?", "\xF0\x80\x80\x80"},
    {"\xF0\x8F\xBF\xBF", "?", "\xF0\x8F\xBF\xBF"},
    {"\xC0\xAF\xC0\xAF", "??", "\xC0\xAF"},
    // Surrogates, alone and in pairs.
    {"\xED\xA0\x80", "?", "\xED\xA0\x80"},
    {"\xED\xBF\xBF", "?", "\xED\xBF\xBF"},
    {"\xED\xA0\xBD\xED\xB8\x80", "??", "\xED\xA0\xBD"},
    // Beyond U+10FFFF.
    {"\xF4\x90\x80\x80", "?", "\xF4\x90\x80\x80"},
    {"\xF7\xBF\xBF\xBF", "?", "\xF7\xBF\xBF\xBF"},
    // Sequences that break off, at the end and in front of something else.
    {"\xC3", "?", "\xC3"},
    {"\xE2\x82", "?", "\xE2\x82"},
    {"\xF0\x9F\x98", "?", "\xF0\x9F\x98"},
    {"\xE2z", "?z", "\xE2"},
    {"\xE2\x82z", "?z", "\xE2\x82"},
    {"\xE2\x82\xE2\x82\xAC", "?\x80", "\xE2\x82"},
    {"\xF0\x9F\x98\xC3\xA4", "?\xE4", "\xF0\x9F\x98"},
    {"\xC3\xC3\xA4", "?\xE4", "\xC3"},
};

TEST(BytesFromUtf8, PutsAQuestionMarkForEveryMalformedPiece) {
    for (const auto& [utf8, bytes, firstOutside] : malformedRows) {
        SCOPED_TRACE(testing::PrintToString(std::string(utf8)));
        const PageText text = BytesFromUtf8(utf8);
        EXPECT_EQ(text.bytes, bytes);
        EXPECT_EQ(text.firstOutside, firstOutside);
        EXPECT_FALSE(text.firstCodePoint);
    }
}

TEST(BytesFromUtf8, CountsWhatIsOutsideAndKeepsTheFirst) {
    const PageText text = BytesFromUtf8("\xE2\x98\x83 a \xE2\x98\x84\x80?\xC3\xA4");
    EXPECT_EQ(text.bytes, "? a ???\xE4");
    EXPECT_EQ(text.outside, 3U);
    EXPECT_EQ(text.firstOutside, "\xE2\x98\x83");
    EXPECT_EQ(text.firstCodePoint, char32_t{0x2603});
}

// U+0080 is a control character, and byte 0x80 is the euro's.
TEST(BytesFromUtf8, TellsControlCharactersFromTheBytesOfTheirNumber) {
    EXPECT_EQ(BytesFromUtf8("\xC2\x80").outside, 1U);
    EXPECT_EQ(BytesFromUtf8("\xC2\x81").bytes, "\x81");
}

}  // namespace
}  // namespace orvane
