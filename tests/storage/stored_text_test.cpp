#include "storage/stored_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace orvane {
namespace {

using namespace std::string_view_literals;

constexpr ExchangeForm utf8 = ExchangeForm::utf8;
constexpr ExchangeForm raw = ExchangeForm::raw;

struct ProblemRow {
    std::string_view given;
    ExchangeForm form;
    std::string_view problem;  // empty: there is none
};

const ProblemRow textRows[] = {
    {"", utf8, ""},
    {" a\r\nb\t\xC3\xA4\xE2\x82\xAC\xC2\x81 ", utf8, ""},
    {"\x80\x81\xE4\xFF\x01", raw, ""},
    {"a\xC2\xB6", utf8,
     "the text holds the character '\xC2\xB6', with which the archive marks its names"},
    {"a\xB6", raw,
     "the text holds the character '\xC2\xB6', with which the archive marks its names"},
    {"\xC3\xA6", utf8,
     "the text holds the character '\xC3\xA6', with which the archive marks its texts"},
    {"\xE6", raw,
     "the text holds the character '\xC3\xA6', with which the archive marks its texts"},
    {"a\0b"sv, utf8, "the text holds a NUL, and nothing behind one is ever found"},
    {"a\0b"sv, raw, "the text holds a NUL, and nothing behind one is ever found"},
    {"\xE2\x98\x83", utf8,
     "the text holds '\xE2\x98\x83' (U+2603) outside the code page Windows-1252"},
    {"\xF0\x9F\x98\x80 \xE2\x98\x83", utf8,
     "the text holds '\xF0\x9F\x98\x80' (U+1F600) and 1 more outside the code page Windows-1252"},
    {"\xC2\x80", utf8, "the text holds U+0080 outside the code page Windows-1252"},
    {"\xE4"
     "b",
     utf8, "the text holds bytes that are no UTF-8 (0xE4) outside the code page Windows-1252"},
};

TEST(StorageProblem, NamesWhatATextMayNotHold) {
    for (const auto& [given, form, problem] : textRows) {
        SCOPED_TRACE(testing::PrintToString(std::string(given)));
        EXPECT_EQ(StorageProblem("the text", given, form).value_or(""), problem);
    }
}

TEST(OutsideProblem, LooksOnlyForCharactersOutside) {
    EXPECT_FALSE(OutsideProblem("the text", "\xC2\xB6\xC3\xA6\0"sv, utf8));
    EXPECT_FALSE(OutsideProblem("the text", "\xFF\xB6", raw));
    EXPECT_TRUE(OutsideProblem("the text", "\xFF\xB6", utf8));
}

const ProblemRow nameRows[] = {
    {"a", utf8, ""},
    {"a b\tc", utf8, ""},
    {"\xC3\xA4", utf8, ""},
    {"", utf8, "the name is empty"},
    {" a", utf8, "the name ' a' has blanks at its ends"},
    {"a ", raw, "the name 'a ' has blanks at its ends"},
    {" ", utf8, "the name ' ' has blanks at its ends"},
    {"a\n", utf8, "the name 'a?' has blanks at its ends"},
    {"\ta", utf8, "the name '?a' has blanks at its ends"},
    {"a\nb", utf8, "the name 'a?b' is not one line"},
    {"a\rb", raw, "the name 'a?b' is not one line"},
    {"a\xC2\xB6", utf8,
     "the name 'a\xC2\xB6' holds the character '\xC2\xB6', with which the archive marks its names"},
    {"\xE2\x98\x83", utf8,
     "the name '\xE2\x98\x83' holds '\xE2\x98\x83' (U+2603) outside the code page Windows-1252"},
};

TEST(NameProblem, NamesWhatANameMayNotBe) {
    for (const auto& [given, form, problem] : nameRows) {
        SCOPED_TRACE(testing::PrintToString(std::string(given)));
        EXPECT_EQ(NameProblem(given, form).value_or(""), problem);
    }
}

TEST(StoredBytes, AreOfTheCodePageOrTheBytesThemselves) {
    EXPECT_EQ(StoredBytes("\xC3\xA4\xE2\x82\xAC\xE2\x98\x83", utf8), "\xE4\x80?");
    EXPECT_EQ(StoredBytes("\xC3\xA4\xFF", raw), "\xC3\xA4\xFF");
    EXPECT_EQ(ShownBytes("\xE4\x80", utf8), "\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(ShownBytes("\xE4\x80", raw), "\xE4\x80");
}

// Or a name with a question mark would be found in its place.
TEST(SearchedName, IsNothingWithCharactersOutside) {
    EXPECT_EQ(SearchedName("\xC3\xA4?", utf8), "\xE4?");
    EXPECT_FALSE(SearchedName("\xE2\x98\x83", utf8));
    EXPECT_EQ(SearchedName("\xE2\x98\x83", raw), "\xE2\x98\x83");
}

}  // namespace
}  // namespace orvane
