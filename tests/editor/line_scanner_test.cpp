#include "editor/line_scanner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "editor/view_geometry.h"
#include "functions/keyword_table.h"
#include "tests/editor/line_cells.h"

namespace orvane {
namespace {

constexpr TextClass header = TextClass::headerKeyword;
constexpr TextClass common = TextClass::commonKeyword;
constexpr TextClass normal = TextClass::normalText;
constexpr TextClass string = TextClass::string;
constexpr TextClass number = TextClass::number;
constexpr TextClass symbol = TextClass::symbol;
constexpr TextClass comment = TextClass::comment;

constexpr std::string_view letters = "_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view digits = "0123456789";
constexpr std::string_view symbols = "^><=,.+-*/%{[()]}|;:";

const std::set<std::string> headerNames = {
    "bin",   "binary",  "base2", "quat",        "quaternary", "base4", "oct",
    "octal", "base8",   "hex",   "hexadecimal", "base16",     "uint",  "unsigned_integer",
    "hide",  "percent", "text",  "define"};

using Pieces = std::vector<ColouredPiece>;

Pieces Scan(std::string_view line) { return ScanLine(line, LanguageWords()); }

// The classes.

TEST(TextClasses, StandInTheirOrderWithTheirNamesAndColours) {
    struct Row {
        TextClass textClass;
        std::string_view name;
        std::uint32_t red, green, blue;
    };
    constexpr Row rows[] = {
        {header, "Header keyword", 0, 128, 0}, {common, "Common keyword", 255, 0, 0},
        {normal, "Normal text", 0, 0, 0},      {string, "String", 0, 0, 0},
        {number, "Number", 128, 0, 128},       {symbol, "Symbol", 0, 0, 255},
        {comment, "Comment", 128, 128, 128},
    };
    ASSERT_EQ(std::size(rows), textClassCount);
    for (std::size_t place = 0; place < textClassCount; ++place) {
        const auto& [textClass, name, red, green, blue] = rows[place];
        SCOPED_TRACE(name);
        EXPECT_EQ(static_cast<std::size_t>(textClass), place);
        EXPECT_EQ(textClassNames[place], name);
        EXPECT_EQ(RedOf(defaultTextColours[place]), red);
        EXPECT_EQ(GreenOf(defaultTextColours[place]), green);
        EXPECT_EQ(BlueOf(defaultTextColours[place]), blue);
    }
}

// The word sets.

TEST(WordSet, KeepsNamesInByteOrder) {
    WordSet set;
    for (const char* word : {"sin", "_x", "a", "\xE9t\xE9", "Sin", "sinh", ""}) set.Insert(word);
    const std::vector<std::string> inOrder = {"", "Sin", "_x", "a", "sin", "sinh", "\xE9t\xE9"};
    EXPECT_EQ(set.Words(), inOrder);
}

TEST(WordSet, FindsExactNamesOnly) {
    WordSet set;
    EXPECT_FALSE(set.Contains(""));
    EXPECT_FALSE(set.Contains("sin"));
    for (const char* word : {"sin", "cos", "zeta"}) set.Insert(word);
    for (const char* word : {"sin", "cos", "zeta"}) EXPECT_TRUE(set.Contains(word)) << word;
    for (const char* word : {"", "Sin", "SIN", "si", "sinh", "a", "zz", "\xFF"}) {
        EXPECT_FALSE(set.Contains(word)) << word;
    }
}

TEST(WordSet, HoldsADuplicateTwice) {
    WordSet set;
    for (const char* word : {"b", "a", "b"}) set.Insert(word);
    EXPECT_EQ(set.Words(), (std::vector<std::string>{"a", "b", "b"}));
}

TEST(WordSet, HasRoomForTenAndTenMoreWheneverItIsFull) {
    WordSet set;
    EXPECT_EQ(set.Words().capacity(), 10u);
    for (std::size_t count = 1; count <= 151; ++count) {
        set.Insert("word");
        EXPECT_EQ(set.Words().size(), count);
        EXPECT_EQ(set.Words().capacity(), (count + 9) / 10 * 10);
    }
}

TEST(LanguageWords, KnowsTheHeaders) {
    const std::vector<std::string> expected(headerNames.begin(), headerNames.end());
    EXPECT_EQ(LanguageWords().headerWords.Words(), expected);
}

TEST(LanguageWords, KnowsEveryOtherKeywordAsCommon) {
    std::vector<std::string> expected;
    for (const KeywordEntry& row : keywordRows) {
        if (headerNames.count(row.name) == 0) expected.push_back(row.name);
    }
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(LanguageWords().commonWords.Words(), expected);
    EXPECT_EQ(expected.size() + headerNames.size(), 151u);
    for (const char* name : {"pi", "e", "true", "false", "sin", "strlen", "complex", "int"}) {
        EXPECT_TRUE(LanguageWords().commonWords.Contains(name)) << name;
    }
}

TEST(LanguageWords, TakesTheSymbolsFromTheKeywordTableInByteOrder) {
    EXPECT_EQ(KeywordTable::symbolChars, symbols);
    EXPECT_EQ(LanguageWords().symbolChars, "%()*+,-./:;<=>[]^{|}");
}

TEST(WordSets, PutSymbolsInByteOrderAlsoAboveAscii) {
    const WordSets words("\xE9z\x7F/a");
    EXPECT_EQ(words.symbolChars, "/az\x7F\xE9");
    for (int code = 0; code < 256; ++code) {
        const char c = static_cast<char>(code);
        EXPECT_EQ(words.SymbolRun().Has(c), std::string_view("\xE9z\x7F"
                                                             "a")
                                                    .find(c) != std::string_view::npos)
            << code;
    }
}

// The scan.

struct ScanRow {
    std::string_view line;
    Pieces pieces;
};

void ExpectScans(const std::vector<ScanRow>& rows) {
    for (const auto& [line, pieces] : rows) {
        SCOPED_TRACE(line);
        EXPECT_EQ(Scan(line), pieces);
    }
}

TEST(ScanLine, DrawsNothingForBlanksAndTabs) {
    ExpectScans({
        {"", {}},
        {" ", {}},
        {"\t", {}},
        {" \t  \t", {}},
        {"  x", {{normal, 2, 1, 2}}},
        {"\tx", {{normal, 1, 1, 4}}},
        {" \tx", {{normal, 2, 1, 4}}},
        {"   \tx", {{normal, 4, 1, 4}}},
        {"abcd\tx", {{normal, 0, 4, 0}, {normal, 5, 1, 8}}},
        {"\t\tx\ty", {{normal, 2, 1, 8}, {normal, 4, 1, 12}}},
    });
}

TEST(ScanLine, FindsComments) {
    ExpectScans({
        {"//", {{comment, 0, 2, 0}}},
        {"///", {{comment, 0, 3, 0}}},
        {"// a \"b\" pi\t1", {{comment, 0, 13, 0}}},
        {"a//b", {{normal, 0, 1, 0}, {comment, 1, 3, 1}}},
        {"+-//c", {{symbol, 0, 2, 0}, {comment, 2, 3, 2}}},
        {"  // ", {{comment, 2, 3, 2}}},
    });
}

TEST(ScanLine, TakesEverySlashByItself) {
    ExpectScans({
        {"/", {{symbol, 0, 1, 0}}},
        {"x/ /y", {{normal, 0, 1, 0}, {symbol, 1, 1, 1}, {symbol, 3, 1, 3}, {normal, 4, 1, 4}}},
        {"/+", {{symbol, 0, 1, 0}, {symbol, 1, 1, 1}}},
        {"+/", {{symbol, 0, 1, 0}, {symbol, 1, 1, 1}}},
        {"+/*", {{symbol, 0, 1, 0}, {symbol, 1, 1, 1}, {symbol, 2, 1, 2}}},
        {"/\t/", {{symbol, 0, 1, 0}, {symbol, 2, 1, 4}}},
        {"*/*//*", {{symbol, 0, 1, 0}, {symbol, 1, 1, 1}, {symbol, 2, 1, 2}, {comment, 3, 3, 3}}},
    });
}

TEST(ScanLine, RunsAStringToTheNextQuoteOrTheEnd) {
    ExpectScans({
        {"\"", {{string, 0, 1, 0}}},
        {"\"\"", {{string, 0, 2, 0}}},
        {"\"\"\"", {{string, 0, 2, 0}, {string, 2, 1, 2}}},
        {"\"a//b\"", {{string, 0, 6, 0}}},
        {"\"a//b\"//c", {{string, 0, 6, 0}, {comment, 6, 3, 6}}},
        {"x\"pi 1", {{normal, 0, 1, 0}, {string, 1, 5, 1}}},
        {"\"a\\\"b\"", {{string, 0, 4, 0}, {normal, 4, 1, 4}, {string, 5, 1, 5}}},
        {"\"a\"\"b\"", {{string, 0, 3, 0}, {string, 3, 3, 3}}},
        {"//\"a", {{comment, 0, 4, 0}}},
    });
}

TEST(ScanLine, GoesOnBehindTheTabsOfAString) {
    ExpectScans({
        {"\"\t\"x", {{string, 0, 3, 0}, {normal, 3, 1, 5}}},
        {"a\"b\tc\" d", {{normal, 0, 1, 0}, {string, 1, 5, 1}, {normal, 7, 1, 7}}},
        {"\" \" x", {{string, 0, 3, 0}, {normal, 4, 1, 4}}},
        {"\"\t\t\"\t1", {{string, 0, 4, 0}, {number, 5, 1, 12}}},
    });
}

TEST(ScanLine, ColoursWords) {
    ExpectScans({
        {"pi", {{common, 0, 2, 0}}},
        {"sin(x)", {{common, 0, 3, 0}, {symbol, 3, 1, 3}, {normal, 4, 1, 4}, {symbol, 5, 1, 5}}},
        {"Sin", {{normal, 0, 3, 0}}},
        {"sinx", {{normal, 0, 4, 0}}},
        {"log10", {{common, 0, 5, 0}}},
        {"pi:", {{common, 0, 2, 0}, {symbol, 2, 1, 2}}},
        {"_", {{normal, 0, 1, 0}}},
        {"my_name9.5", {{normal, 0, 8, 0}, {symbol, 8, 1, 8}, {number, 9, 1, 9}}},
        {"pi\xE9", {{common, 0, 2, 0}, {normal, 2, 1, 2}}},
    });
}

TEST(ScanLine, TakesAHeaderOnlyInFrontOfAColon) {
    ExpectScans({
        {"hex", {{normal, 0, 3, 0}}},
        {"hex ", {{normal, 0, 3, 0}}},
        {"hex\t", {{normal, 0, 3, 0}}},
        {"hex:", {{header, 0, 3, 0}, {symbol, 3, 1, 3}}},
        {"hex :", {{header, 0, 3, 0}, {symbol, 4, 1, 4}}},
        {"hex \t :", {{header, 0, 3, 0}, {symbol, 6, 1, 9}}},
        {"hex;:", {{normal, 0, 3, 0}, {symbol, 3, 2, 3}}},
        {"hex\":\"", {{normal, 0, 3, 0}, {string, 3, 3, 3}}},
        {"hex x:", {{normal, 0, 3, 0}, {normal, 4, 1, 4}, {symbol, 5, 1, 5}}},
        {"Hex:", {{normal, 0, 3, 0}, {symbol, 3, 1, 3}}},
        {"hexx:", {{normal, 0, 4, 0}, {symbol, 4, 1, 4}}},
        {"hex//:", {{normal, 0, 3, 0}, {comment, 3, 3, 3}}},
        {"hex\n:", {{normal, 0, 3, 0}, {normal, 3, 1, 3}, {symbol, 4, 1, 4}}},
        {"text:oct:", {{header, 0, 4, 0}, {symbol, 4, 1, 4}, {header, 5, 3, 5}, {symbol, 8, 1, 8}}},
        {"hex:=", {{header, 0, 3, 0}, {symbol, 3, 2, 3}}},
    });
    for (const std::string& name : headerNames) {
        SCOPED_TRACE(name);
        const std::int32_t length = static_cast<std::int32_t>(name.size());
        EXPECT_EQ(Scan(name), (Pieces{{normal, 0, length, 0}}));
        EXPECT_EQ(Scan(name + "\t:").at(0), (ColouredPiece{header, 0, length, 0}));
    }
}

TEST(ScanLine, ColoursEveryOtherKeywordWhateverFollows) {
    for (const KeywordEntry& row : keywordRows) {
        if (headerNames.count(row.name) != 0) continue;
        SCOPED_TRACE(row.name);
        const std::string name = row.name;
        const ColouredPiece piece = {common, 0, static_cast<std::int32_t>(name.size()), 0};
        for (const char* behind : {"", "(", ":", " :", "\xE9"}) {
            EXPECT_EQ(Scan(name + behind).at(0), piece);
        }
    }
}

TEST(ScanLine, AsksForCommonWordsBeforeHeaders) {
    WordSets words(":");
    words.commonWords.Insert("both");
    words.headerWords.Insert("both");
    EXPECT_EQ(ScanLine("both:", words), (Pieces{{common, 0, 4, 0}, {symbol, 4, 1, 4}}));
}

TEST(ScanLine, TakesWordCharactersAndPointsIntoANumber) {
    ExpectScans({
        {"0hFF", {{number, 0, 4, 0}}},
        {"1.5", {{number, 0, 3, 0}}},
        {"1.2.3e", {{number, 0, 6, 0}}},
        {"1.", {{number, 0, 2, 0}}},
        {"1..", {{number, 0, 3, 0}}},
        {"1_pi", {{number, 0, 4, 0}}},
        {".5", {{symbol, 0, 1, 0}, {number, 1, 1, 1}}},
        {"..5.", {{symbol, 0, 2, 0}, {number, 2, 2, 2}}},
        {"1e-5", {{number, 0, 2, 0}, {symbol, 2, 1, 2}, {number, 3, 1, 3}}},
        {"2pi", {{number, 0, 3, 0}}},
        {"1 .5", {{number, 0, 1, 0}, {symbol, 2, 1, 2}, {number, 3, 1, 3}}},
        {"1\xE9", {{number, 0, 1, 0}, {normal, 1, 1, 1}}},
        {"5//", {{number, 0, 1, 0}, {comment, 1, 2, 1}}},
    });
}

TEST(ScanLine, TakesARunOfSymbols) {
    ExpectScans({
        {"^><=,.+-*%{[()]}|;:", {{symbol, 0, 19, 0}}},
        {"(a)", {{symbol, 0, 1, 0}, {normal, 1, 1, 1}, {symbol, 2, 1, 2}}},
        {"( )", {{symbol, 0, 1, 0}, {symbol, 2, 1, 2}}},
        {"=\"", {{symbol, 0, 1, 0}, {string, 1, 1, 1}}},
        {"+!+", {{symbol, 0, 1, 0}, {normal, 1, 1, 1}, {symbol, 2, 1, 2}}},
    });
}

TEST(ScanLine, TakesAnythingElseOneCharacterAtATime) {
    ExpectScans({
        {"!!", {{normal, 0, 1, 0}, {normal, 1, 1, 1}}},
        {"\xE9\xE9", {{normal, 0, 1, 0}, {normal, 1, 1, 1}}},
        {"\xE9 \xFF", {{normal, 0, 1, 0}, {normal, 2, 1, 2}}},
        {std::string_view("\0a", 2), {{normal, 0, 1, 0}, {normal, 1, 1, 1}}},
        {"\n\r", {{normal, 0, 1, 0}, {normal, 1, 1, 1}}},
        {"\x7F", {{normal, 0, 1, 0}}},
        {"'&'", {{normal, 0, 1, 0}, {normal, 1, 1, 1}, {normal, 2, 1, 2}}},
    });
}

bool IsOneOf(char c, std::string_view set) { return set.find(c) != std::string_view::npos; }

TextClass ClassOfSingleByte(char c) {
    if (c == '"') return string;
    if (c == 'e') return common;
    if (IsOneOf(c, digits)) return number;
    return IsOneOf(c, symbols) ? symbol : normal;
}

TEST(ScanLine, KnowsEveryByte) {
    for (int code = 0; code < 256; ++code) {
        SCOPED_TRACE(code);
        const char c = static_cast<char>(code);
        const std::string once(1, c);
        if (c == ' ' || c == '\t') {
            EXPECT_EQ(Scan(once), Pieces{});
            continue;
        }
        EXPECT_EQ(Scan(once), (Pieces{{ClassOfSingleByte(c), 0, 1, 0}}));
        // Behind a letter: only word characters go on with it.
        const bool inWord = IsOneOf(c, letters) || IsOneOf(c, digits);
        EXPECT_EQ(Scan("q" + once).at(0).length, inWord ? 2 : 1);
        EXPECT_EQ(Scan("q" + once).size(), inWord ? 1u : 2u);
        // Behind a digit: a point as well.
        EXPECT_EQ(Scan("7" + once).at(0).length, inWord || c == '.' ? 2 : 1);
        // Behind a symbol: symbols, but no slash.
        EXPECT_EQ(Scan("=" + once).at(0).length, IsOneOf(c, symbols) && c != '/' ? 2 : 1);
        // Twice.
        const std::size_t pieceCount = Scan(once + once).size();
        const bool isRun = inWord || IsOneOf(c, symbols) || c == '"';
        EXPECT_EQ(pieceCount, isRun ? 1u : 2u);
    }
}

TEST(ScanLine, EmptiesTheVectorThatItIsGiven) {
    Pieces pieces = {{comment, 7, 7, 7}};
    ScanLine("pi", LanguageWords(), pieces);
    EXPECT_EQ(pieces, (Pieces{{common, 0, 2, 0}}));
    ScanLine("", LanguageWords(), pieces);
    EXPECT_EQ(pieces, Pieces{});
}

// Each of these has a megabyte: a scan that looked at the rest of the line for each of its pieces
// would not come to an end in the time that tests have.
TEST(ScanLine, TakesLongLinesInOneWalk) {
    struct Row {
        std::string_view repeated;
        std::size_t piecesEach;
    };
    constexpr std::size_t repeats = 1 << 18;
    constexpr Row rows[] = {
        {"hex ", 1}, {"h\t: ", 2}, {"1.5+", 2}, {"\"a\"/", 2}, {"/ ++", 2}, {"\xE9\xE9\xE9\xE9", 4},
    };
    for (const auto& [repeated, piecesEach] : rows) {
        SCOPED_TRACE(repeated);
        std::string line;
        for (std::size_t i = 0; i < repeats; ++i) line += repeated;
        EXPECT_EQ(Scan(line).size(), repeats * piecesEach);
    }
    const std::string tabs(1 << 20, '\t');
    EXPECT_EQ(Scan("hex" + tabs + ":x").at(2).cell, (1 << 22) + 1);
    EXPECT_EQ(Scan("\"" + tabs + "\"x").at(1).cell, (1 << 22) + 1);
}

// The stretches.

Pieces StretchesOf(std::string_view line, const ColouredPiece& piece) {
    Pieces stretches;
    AppendStretches(line, piece, stretches);
    return stretches;
}

TEST(AppendStretches, CutsAPieceAtItsTabs) {
    struct Row {
        std::string_view line;
        ColouredPiece piece;
        Pieces stretches;
    };
    const Row rows[] = {
        {"pi", {common, 0, 2, 0}, {{common, 0, 2, 0}}},
        {"pi\tpi", {common, 0, 2, 0}, {{common, 0, 2, 0}}},
        {"\"a\tb\"\tc", {string, 0, 5, 0}, {{string, 0, 2, 0}, {string, 3, 2, 4}}},
        {"x \"\t\t\"", {string, 2, 4, 2}, {{string, 2, 1, 2}, {string, 5, 1, 8}}},
        {"//\t", {comment, 0, 3, 0}, {{comment, 0, 2, 0}}},
        {"// a\tbc\td",
         {comment, 0, 9, 0},
         {{comment, 0, 4, 0}, {comment, 5, 2, 8}, {comment, 8, 1, 12}}},
    };
    for (const auto& [line, piece, stretches] : rows) {
        SCOPED_TRACE(line);
        EXPECT_EQ(StretchesOf(line, piece), stretches);
    }
}

TEST(AppendStretches, StaysAtTheLastCell) {
    constexpr std::int32_t nearEnd = largestCell - 2;
    EXPECT_EQ(StretchesOf("// a\tbc", {comment, 0, 7, nearEnd}),
              (Pieces{{comment, 0, 4, nearEnd}, {comment, 5, 2, largestCell}}));
}

TEST(AppendStretches, AddsBehindWhatIsThere) {
    Pieces stretches = {{number, 0, 1, 0}};
    AppendStretches("1 //", {comment, 2, 2, 2}, stretches);
    EXPECT_EQ(stretches, (Pieces{{number, 0, 1, 0}, {comment, 2, 2, 2}}));
}

}  // namespace
}  // namespace orvane
