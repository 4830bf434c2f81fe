#include "core/text_scan.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace orvane {
namespace {

TEST(CharacterClasses, KnowPlainLettersDigitsAndUnderscoresOnly) {
    constexpr std::string_view letters = "_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    constexpr std::string_view digits = "0123456789";
    for (int code = 0; code < 256; ++code) {
        SCOPED_TRACE(code);
        const char c = static_cast<char>(code);
        const bool letter = letters.find(c) != std::string_view::npos;
        const bool digit = digits.find(c) != std::string_view::npos;
        EXPECT_EQ(IsWordStart(c), letter);
        EXPECT_EQ(IsDigit(c), digit);
        EXPECT_EQ(IsWordChar(c), letter || digit);
    }
}

struct ScanRow {
    std::string_view text;
    std::size_t from;
    std::size_t found;
};

TEST(SkipSpaces, StepsOverBlanksAlone) {
    constexpr ScanRow rows[] = {
        {"  a", 0, 2}, {"a  b", 1, 3}, {"\ta", 0, 0}, {" \n", 0, 1}, {"   ", 0, 3}, {"", 0, 0},
    };
    for (const auto& [text, from, found] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(SkipSpaces(text, from), found);
    }
}

TEST(SkipWhite, StepsOverBlanksTabsAndLineFeeds) {
    constexpr ScanRow rows[] = {
        {" \t\n a", 0, 4}, {"a \n", 1, 3}, {"\ra", 0, 0}, {"\v", 0, 0}, {"a", 0, 0}, {"", 0, 0},
    };
    for (const auto& [text, from, found] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(SkipWhite(text, from), found);
    }
}

TEST(FindWordEnd, StopsAtTheFirstCharacterOutsideTheWord) {
    constexpr ScanRow rows[] = {
        {"abc_1.5", 0, 5}, {"1e5 ", 0, 3},  {"a(b", 0, 1},
        {"(a", 0, 0},      {"a\xE9", 0, 1}, {"ab", 2, 2},
    };
    for (const auto& [text, from, found] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FindWordEnd(text, from), found);
    }
}

TEST(FindNumberEnd, TakesPointsIn) {
    constexpr ScanRow rows[] = {
        {"1.5+2", 0, 3}, {"1.2.3x", 0, 6}, {"5.", 0, 2}, {"a.b c", 0, 3}, {"+1", 0, 0}, {"", 0, 0},
    };
    for (const auto& [text, from, found] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FindNumberEnd(text, from), found);
    }
}

TEST(SkipString, EndsBehindTheNextQuoteWithoutEscapes) {
    constexpr ScanRow rows[] = {
        {"\"abc\"x", 0, 5}, {"\"\"", 0, 2},  {"\"a\\\"b\"", 0, 4},
        {"x\"a;b\"", 1, 6}, {"\"abc", 0, 4}, {"\"", 0, 1},
    };
    for (const auto& [text, from, found] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(SkipString(text, from), found);
    }
}

TEST(FindClosingBracket, BalancesTheBracketAtItsStart) {
    constexpr ScanRow rows[] = {
        {"(a)", 0, 2}, {"((a)(b))c", 0, 7}, {"((a)(b))c", 1, 3},
        {"()", 0, 1},  {"((a)", 0, 4},      {"(", 0, 1},
    };
    for (const auto& [text, from, found] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FindClosingBracket(text, from), found);
    }
}

TEST(FindOpeningBracket, LooksBackToTheStartThatItIsGiven) {
    struct Row {
        std::string_view text;
        std::size_t close, start, found;
    };
    constexpr Row rows[] = {
        {"(a)", 2, 0, 0}, {"x((a)(b))", 8, 0, 1}, {"x((a)(b))", 7, 0, 5},
        {"a)", 1, 0, 0},  {"(a))", 3, 1, 1},      {"(a))", 3, 0, 0},
    };
    for (const auto& [text, close, start, found] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FindOpeningBracket(text, close, start), found);
    }
}

TEST(FindTopLevelComma, StopsWhereTheBracketCountsAreEqual) {
    constexpr ScanRow rows[] = {
        {"1,2", 0, 1},
        {"f(1,2),3", 0, 6},
        {"1,2,3", 2, 3},
        {"(1,2)", 0, 5},
        {",1", 0, 0},
        {"12", 0, 2},
        {"", 0, 0},
        // A closing bracket too many does not end the scan, and the counts differ behind it.
        {"1),2", 0, 4},
        {"1),(2,3", 0, 5},
    };
    for (const auto& [text, from, found] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FindTopLevelComma(text, from), found);
    }
}

TEST(ShortenForMessage, TrimsBlanksAndCutsWhatIsLongerThanTheLimit) {
    struct Row {
        std::string_view piece;
        std::size_t limit;
        std::string_view shown;
    };
    constexpr Row rows[] = {
        {"  ab  ", 30, "ab"},
        {"a b", 30, "a b"},
        {"    ", 30, ""},
        {"", 30, ""},
        {"\tab\n", 30, "\tab\n"},
        {"123456789012345678901234567890", 30, "123456789012345678901234567890"},
        {"  123456789012345678901234567890  ", 30, "123456789012345678901234567890"},
        {"1234567890123456789012345678901", 30, "123456789012345678901234567..."},
        {"12345678901", 10, "1234567..."},
        {"1234567890", 10, "1234567890"},
        {"1234567890", 9, "123456789..."},
        {"123456789", 9, "123456789"},
    };
    for (const auto& [piece, limit, shown] : rows) {
        SCOPED_TRACE(piece);
        EXPECT_EQ(ShortenForMessage(piece, limit), shown);
    }
}

TEST(ShortenForMessage, HasTheLimitOfMessages) {
    EXPECT_EQ(ShortenForMessage("1234567890123456789012345678901"),
              "123456789012345678901234567...");
}

}  // namespace
}  // namespace orvane
