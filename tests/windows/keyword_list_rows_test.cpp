#include "windows/keyword_list_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {
namespace {

// Copies: a sorting moves the texts of the list.
using RowTexts = std::array<std::string, keywordColumnCount>;

constexpr char seriesTerm[] =
    "variable name ,float lower-limit ,float step-len ,pint steps ,function term(name)";
constexpr char curveTerm[] =
    "variable name ,float left-endpoint ,float right-endpoint ,pint steps ,function Y(name)";
constexpr char polarTerm[] =
    "variable name ,float start-radian ,float end-radian ,pint steps ,function Radius(name)";
constexpr char parametricTerms[] =
    "variable name ,float left-endpoint ,float right-endpoint ,pint steps ,function X(name) "
    ",function Y(name)";

// Every row as it stands before the first sorting.
// clang-format off
const RowTexts allRows[] = {
    {{"float", "abs", "(", "any", "", ")"}},
    {{"float", "absolute", "(", "any", "", ")"}},
    {{"float", "acos", "(", "float", "", ")"}},
    {{"float", "actg", "(", "float", "", ")"}},
    {{"float", "angle_of_vectors", "(", "point ,point", " ,point", ")"}},
    {{"float", "asin", "(", "float", "", ")"}},
    {{"float", "atan", "(", "float", "", ")"}},
    {{"float", "average", "(", "float", " ,float ,...", ")"}},
    {{"<header>", "base16", "", "", "", ""}},
    {{"<header>", "base2", "", "", "", ""}},
    {{"<header>", "base4", "", "", "", ""}},
    {{"<header>", "base8", "", "", "", ""}},
    {{"<header>", "bin", "", "", "", ""}},
    {{"<header>", "binary", "", "", "", ""}},
    {{"int", "bit_and", "(", "uint ,uint ,bits", "", ")"}},
    {{"int", "bit_not", "(", "uint ,bits", "", ")"}},
    {{"int", "bit_or", "(", "uint ,uint ,bits", "", ")"}},
    {{"int", "bit_xor", "(", "uint ,uint ,bits", "", ")"}},
    {{"int", "bitwise_and", "(", "uint ,uint ,bits", "", ")"}},
    {{"int", "bitwise_not", "(", "uint ,bits", "", ")"}},
    {{"int", "bitwise_or", "(", "uint ,uint ,bits", "", ")"}},
    {{"int", "bitwise_xor", "(", "uint ,uint ,bits", "", ")"}},
    {{"int", "bool", "(", "float", "", ")"}},
    {{"int", "boolean", "(", "float", "", ")"}},
    {{"float", "cbrt", "(", "float", "", ")"}},
    {{"float", "cmp", "(", "float ,float", "", ")"}},
    {{"float", "combination", "(", "uint ,uint", "", ")"}},
    {{"float", "compare", "(", "float ,float", "", ")"}},
    {{"complex,float", "complex", "(", "any ,any", "", ")"}},
    {{"float", "cos", "(", "float radian", "", ")"}},
    {{"float", "cosh", "(", "float", "", ")"}},
    {{"int", "count", "(", "float", " ,float ,...", ")"}},
    {{"float", "ctg", "(", "float radian", "", ")"}},
    {{"float", "ctgh", "(", "float", "", ")"}},
    {{"float", "cube_root", "(", "float", "", ")"}},
    {{"int", "days", "(", "uint yyyy ,uint mm ,uint dd", "", ")"}},
    {{"int", "days_of_the_year", "(", "uint yyyy ,uint mm ,uint dd", "", ")"}},
    {{"<header>", "define", "", "", "", ""}},
    {{"float", "deg", "(", "float radian", "", ")"}},
    {{"float", "degree", "(", "float radian", "", ")"}},
    {{"float", "distance_to_line", "(", "point ,point ,point", " ,point", ")"}},
    {{"any", "divide", "(", "any ,any", "", ")"}},
    {{"float", "dot_product", "(", "point ,point", " ,point", ")"}},
    {{"<constant>", "e", "", "2.718281828459045235360287471352", "", ""}},
    {{"int", "equals", "(", "float ,float", "", ")"}},
    {{"float", "equation_root", "(", curveTerm, "", ")"}},
    {{"float", "exp", "(", "float power", "", ")"}},
    {{"float", "exponential", "(", "float power", "", ")"}},
    {{"int", "factorial", "(", "uint", "", ")"}},
    {{"<constant>", "false", "", "0", "", ""}},
    {{"float", "frac", "(", "float", "", ")"}},
    {{"float", "fractional", "(", "float", "", ")"}},
    {{"int", "great_equals", "(", "float ,float", "", ")"}},
    {{"int", "great_than", "(", "float ,float", "", ")"}},
    {{"<header>", "hex", "", "", "", ""}},
    {{"<header>", "hexadecimal", "", "", "", ""}},
    {{"<header>", "hide", "", "", "", ""}},
    {{"formula", "if", "(", "int condition", "", ")"}},
    {{"formula", "if", "(", "int condition ,select positive", "", ")"}},
    {{"formula", "if", "(", "select none-zero ,select zero", "", ")"}},
    {{"formula", "if", "(", "select zero ,select negative", "", ")"}},
    {{"int", "int", "(", "float", "", ")"}},
    {{"int", "integer", "(", "float", "", ")"}},
    {{"float", "integral_area_parametric_polar", "(", parametricTerms, " ,boolean option", ")"}},
    {{"float", "integral_area_parametric_xy", "(", parametricTerms, "", ")"}},
    {{"float", "integral_area_polar", "(", polarTerm, " ,boolean option", ")"}},
    {{"float", "integral_area_xy", "(", curveTerm, " ,boolean option", ")"}},
    {{"float", "integral_curve_parametric", "(", parametricTerms, "", ")"}},
    {{"float", "integral_curve_polar", "(", polarTerm, "", ")"}},
    {{"float", "integral_curve_xy", "(", curveTerm, "", ")"}},
    {{"float", "inv", "(", "float", "", ")"}},
    {{"float", "invert", "(", "float", "", ")"}},
    {{"int", "left_shift", "(", "uint ,uint ,bits", "", ")"}},
    {{"float", "length", "(", "float", " ,float ,...", ")"}},
    {{"float", "length", "(", "point", "", ")"}},
    {{"int", "less_equals", "(", "float ,float", "", ")"}},
    {{"int", "less_than", "(", "float ,float", "", ")"}},
    {{"float", "ln", "(", "pfloat", "", ")"}},
    {{"1", "locus_parametric", "(", parametricTerms, "", ")"}},
    {{"1", "locus_polar", "(", polarTerm, "", ")"}},
    {{"1", "locus_xy", "(", curveTerm, "", ")"}},
    {{"float", "log", "(", "pfloat base ,pfloat", "", ")"}},
    {{"float", "log10", "(", "pfloat", "", ")"}},
    {{"int", "lsh", "(", "uint ,uint ,bits", "", ")"}},
    {{"matrix", "matrix", "(", "point ,point", " ,point ,...", ")"}},
    {{"matrix", "matrix", "(", "matrix", "", ")"}},
    {{"matrix", "matrix_adj", "(", "point ,point", " ,point ,...", ")"}},
    {{"matrix", "matrix_adj", "(", "matrix", "", ")"}},
    {{"matrix", "matrix_adjoint", "(", "point ,point", " ,point ,...", ")"}},
    {{"matrix", "matrix_adjoint", "(", "matrix", "", ")"}},
    {{"float", "matrix_det", "(", "point ,point", " ,point ,...", ")"}},
    {{"float", "matrix_det", "(", "matrix", "", ")"}},
    {{"float", "matrix_determinant", "(", "point ,point", " ,point ,...", ")"}},
    {{"float", "matrix_determinant", "(", "matrix", "", ")"}},
    {{"matrix", "matrix_inv", "(", "point ,point", " ,point ,...", ")"}},
    {{"matrix", "matrix_inv", "(", "matrix", "", ")"}},
    {{"matrix", "matrix_inverse", "(", "point ,point", " ,point ,...", ")"}},
    {{"matrix", "matrix_inverse", "(", "matrix", "", ")"}},
    {{"matrix", "matrix_minor", "(", "pint row ,pint column ,point ,point", " ,point ,...", ")"}},
    {{"matrix", "matrix_minor", "(", "pint row ,pint column ,matrix", "", ")"}},
    {{"uint", "matrix_rank", "(", "point ,point", " ,point ,...", ")"}},
    {{"uint", "matrix_rank", "(", "matrix", "", ")"}},
    {{"matrix", "matrix_t", "(", "point ,point", " ,point ,...", ")"}},
    {{"matrix", "matrix_t", "(", "matrix", "", ")"}},
    {{"matrix", "matrix_transpose", "(", "point ,point", " ,point ,...", ")"}},
    {{"matrix", "matrix_transpose", "(", "matrix", "", ")"}},
    {{"float", "max", "(", "float", " ,float ,...", ")"}},
    {{"int", "max_int", "(", "bits", "", ")"}},
    {{"int", "max_uint", "(", "bits", "", ")"}},
    {{"float", "maximum", "(", "float", " ,float ,...", ")"}},
    {{"float", "mean", "(", "float", " ,float ,...", ")"}},
    {{"float", "median", "(", "float", " ,float ,...", ")"}},
    {{"float", "min", "(", "float", " ,float ,...", ")"}},
    {{"int", "min_int", "(", "bits", "", ")"}},
    {{"float", "minimum", "(", "float", " ,float ,...", ")"}},
    {{"any", "minus", "(", "any ,any", "", ")"}},
    {{"any", "neg", "(", "any", "", ")"}},
    {{"any", "negative", "(", "any", "", ")"}},
    {{"boolean", "not", "(", "float", "", ")"}},
    {{"int", "not_equals", "(", "float ,float", "", ")"}},
    {{"<header>", "oct", "", "", "", ""}},
    {{"<header>", "octal", "", "", "", ""}},
    {{"<header>", "percent", "", "", "", ""}},
    {{"float", "permutation", "(", "uint ,uint", "", ")"}},
    {{"<constant>", "pi", "", "3.141592653589793238462643383279", "", ""}},
    {{"any", "plus", "(", "any ,any", "", ")"}},
    {{"column vector", "point", "(", "float", " ,float ,...", ")"}},
    {{"column vector", "point", "(", "point", "", ")"}},
    {{"float", "polygon_edges", "(", "point", " ,point ,...", ")"}},
    {{"float", "polygon_edges", "(", "float", " ,float ,...", ")"}},
    {{"float", "polygon_edges_open", "(", "point", " ,point ,...", ")"}},
    {{"float", "polygon_edges_open", "(", "float", " ,float ,...", ")"}},
    {{"float", "pow", "(", "float ,float power", "", ")"}},
    {{"float", "power", "(", "float ,float power", "", ")"}},
    {{"float", "product", "(", seriesTerm, "", ")"}},
    {{"<header>", "quat", "", "", "", ""}},
    {{"<header>", "quaternary", "", "", "", ""}},
    {{"float", "rad", "(", "float degree", "", ")"}},
    {{"float", "radian", "(", "float degree", "", ")"}},
    {{"float", "reminder", "(", "float ,float base", "", ")"}},
    {{"int", "right_shift", "(", "uint ,uint ,bits", "", ")"}},
    {{"float", "root", "(", "float ,float root", "", ")"}},
    {{"int", "rsh", "(", "uint ,uint ,bits", "", ")"}},
    {{"float", "series", "(", seriesTerm, "", ")"}},
    {{"float", "sign", "(", "float", "", ")"}},
    {{"float", "sin", "(", "float radian", "", ")"}},
    {{"float", "sinh", "(", "float", "", ")"}},
    {{"float", "sqrt", "(", "ufloat", "", ")"}},
    {{"float", "square_root", "(", "ufloat", "", ")"}},
    {{"int", "strlen", "(", "string", "", ")"}},
    {{"int", "strsum", "(", "string", "", ")"}},
    {{"int", "strsumspecial", "(", "string", "", ")"}},
    {{"float", "sum", "(", "float", " ,float ,...", ")"}},
    {{"float", "sum_n", "(", "float power ,float", " ,float ,...", ")"}},
    {{"float", "summary", "(", "float", " ,float ,...", ")"}},
    {{"float", "summary_n", "(", "float power ,float", " ,float ,...", ")"}},
    {{"float", "tan", "(", "float radian", "", ")"}},
    {{"float", "tanh", "(", "float", "", ")"}},
    {{"<header>", "text", "", "", "", ""}},
    {{"any", "times", "(", "any ,any", "", ")"}},
    {{"float", "triangle_area", "(", "point ,point ,point", " ,point", ")"}},
    {{"<constant>", "true", "", "+1", "", ""}},
    {{"<header>", "uint", "", "", "", ""}},
    {{"<header>", "unsigned_integer", "", "", "", ""}},
    {{"float", "variance", "(", "float", " ,float ,...", ")"}},
    {{"column vector", "vector_clm", "(", "float", " ,float ,...", ")"}},
    {{"column vector", "vector_clm", "(", "point", "", ")"}},
    {{"column vector", "vector_column", "(", "float", " ,float ,...", ")"}},
    {{"column vector", "vector_column", "(", "point", "", ")"}},
    {{"row vector", "vector_row", "(", "float", " ,float ,...", ")"}},
    {{"row vector", "vector_row", "(", "point", "", ")"}},
    {{"int", "weekday", "(", "uint yyyy ,uint mm ,uint dd", "", ")"}},
};
// clang-format on
constexpr std::size_t allRowCount = std::size(allRows);

RowTexts TextsOf(const KeywordListRows& list, std::size_t row) {
    RowTexts texts;
    for (std::size_t column = 0; column < texts.size(); ++column) {
        texts[column] = list.Text(row, column);
    }
    return texts;
}

std::vector<RowTexts> AllTextsOf(const KeywordListRows& list) {
    std::vector<RowTexts> texts;
    for (std::size_t row = 0; row < list.Size(); ++row) texts.push_back(TextsOf(list, row));
    return texts;
}

std::vector<std::string> Column(const KeywordListRows& list, std::size_t column) {
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < list.Size(); ++row) {
        texts.emplace_back(list.Text(row, column));
    }
    return texts;
}

std::vector<std::string> Names(const KeywordListRows& list) {
    return Column(list, keywordNameColumn);
}

// The rows by a column's text, equal ones as they were.
std::vector<RowTexts> Sorted(std::vector<RowTexts> rows, std::size_t column, bool ascending) {
    std::stable_sort(rows.begin(), rows.end(), [&](const RowTexts& left, const RowTexts& right) {
        return ascending ? left[column] < right[column] : right[column] < left[column];
    });
    return rows;
}

KeywordEntry MadeUpFunction(const char* name, const char* returnText, const char* mainParams,
                            const char* optionalParams) {
    return {name, returnText, KeywordGroup::normal, 1,
            1,    mainParams, optionalParams,       HelpKind::normal};
}

KeywordEntry MadeUpHeader(const char* name) {
    return {name, nullptr, KeywordGroup::header, 0, 0, nullptr, nullptr, HelpKind::outputKey};
}

KeywordListRows ListOf(const std::vector<KeywordEntry>& entries) {
    std::vector<const KeywordEntry*> pointers;
    for (const KeywordEntry& entry : entries) pointers.push_back(&entry);
    return KeywordListRows(pointers);
}

TEST(KeywordListRows, NamesSixColumns) {
    EXPECT_EQ(keywordColumnHeaders, (std::array<std::string_view, keywordColumnCount>{
                                        "return / <type>", "function / header / constant", " ",
                                        "main parameters", "optional parameters", " "}));
}

TEST(KeywordListRows, ShowsEverySignatureInTableOrder) {
    const KeywordListRows list;
    ASSERT_EQ(list.Size(), allRowCount);
    for (std::size_t row = 0; row < allRowCount; ++row) {
        SCOPED_TRACE(allRows[row][keywordNameColumn]);
        EXPECT_EQ(TextsOf(list, row), allRows[row]);
    }
}

TEST(KeywordListRows, ShowsEveryKeywordOfTheTable) {
    std::vector<std::string> names = Names(KeywordListRows());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    std::vector<std::string> keywords;
    for (const KeywordEntry* entry : keywordTable.Sorted()) keywords.emplace_back(entry->name);
    EXPECT_EQ(keywords.size(), 151u);
    EXPECT_EQ(names, keywords);
}

TEST(KeywordListRows, PutsOneOptionalFormBesideTheFirstOfThree) {
    const std::vector<KeywordEntry> entries = {
        MadeUpFunction("made_up", "any", "float/point,point/matrix", "float,...")};
    EXPECT_EQ(AllTextsOf(ListOf(entries)),
              (std::vector<RowTexts>{{"any", "made_up", "(", "float", " ,float ,...", ")"},
                                     {"any", "made_up", "(", "point ,point", "", ")"},
                                     {"any", "made_up", "(", "matrix", "", ")"}}));
}

TEST(KeywordListRows, LeavesOutAFunctionWithoutParameters) {
    const std::vector<KeywordEntry> entries = {MadeUpFunction("bare", "any", nullptr, "float"),
                                               MadeUpFunction("full", "any", "float", nullptr)};
    EXPECT_EQ(AllTextsOf(ListOf(entries)),
              (std::vector<RowTexts>{{"any", "full", "(", "float", "", ")"}}));
}

TEST(SortBy, CountsHeadersAsTheFirstRowInTheFirstSorting) {
    for (std::size_t column = 0; column < keywordColumnCount; ++column) {
        SCOPED_TRACE(column);
        // What the first sorting compares: a header's own texts only where row 0 has the same.
        std::vector<std::size_t> order(allRowCount);
        for (std::size_t row = 0; row < allRowCount; ++row) order[row] = row;
        const auto compared = [&](std::size_t row) -> const std::string& {
            return allRows[allRows[row][0] == "<header>" ? 0 : row][column];
        };
        std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
            return compared(left) > compared(right);
        });
        std::vector<RowTexts> expected;
        for (const std::size_t row : order) expected.push_back(allRows[row]);

        KeywordListRows list;
        list.SortBy(column);
        EXPECT_EQ(AllTextsOf(list), expected);
    }
}

TEST(SortBy, EndsWithTheHeadersBehindTheFirstRowAtFirst) {
    KeywordListRows list;
    list.SortBy(keywordNameColumn);
    const std::vector<std::string> names = Names(list);
    EXPECT_EQ(names.front(), "weekday");
    const std::vector<std::string> tail(names.end() - 20, names.end());
    EXPECT_EQ(tail, (std::vector<std::string>{
                        "absolute",    "abs",        "base16", "base2",  "base4",
                        "base8",       "bin",        "binary", "define", "hex",
                        "hexadecimal", "hide",       "oct",    "octal",  "percent",
                        "quat",        "quaternary", "text",   "uint",   "unsigned_integer"}));
}

TEST(SortBy, ReadsTheHeadersOwnTextsFromTheSecondSortingOn) {
    KeywordListRows list;
    list.SortBy(keywordNameColumn);
    list.SortBy(keywordNameColumn);
    std::vector<std::string> names;
    for (const RowTexts& row : allRows) names.emplace_back(row[keywordNameColumn]);
    EXPECT_EQ(Names(list), names);
    EXPECT_EQ(list.Text(0, 1), "abs");
    EXPECT_EQ(list.Text(allRowCount - 1, 1), "weekday");
}

TEST(SortBy, ReversesTheOrderWhenTheSameHeaderIsClickedTwice) {
    for (std::size_t column = 0; column < keywordColumnCount; ++column) {
        SCOPED_TRACE(column);
        KeywordListRows list;
        list.SortBy(column);
        for (const bool ascending : {true, false, true, false}) {
            SCOPED_TRACE(ascending);
            const std::vector<RowTexts> before = AllTextsOf(list);
            list.SortBy(column);
            EXPECT_EQ(AllTextsOf(list), Sorted(before, column, ascending));
        }
    }
}

TEST(SortBy, TurnsTheDirectionWithEveryClickWhicheverColumnItIsOn) {
    KeywordListRows list;
    bool ascending = false;
    for (const std::size_t column : {0u, 3u, 1u, 1u, 4u, 2u, 5u, 0u}) {
        SCOPED_TRACE(column);
        std::vector<RowTexts> before = AllTextsOf(list);
        list.SortBy(column);
        if (column != 0 || ascending) {
            EXPECT_EQ(AllTextsOf(list), Sorted(before, column, ascending));
        }
        ascending = !ascending;
    }

    KeywordListRows second;
    second.SortBy(0);
    second.SortBy(1);
    EXPECT_EQ(second.Text(0, 1), "abs");  // low to high, although it is the column's first click
    second.SortBy(0);
    EXPECT_EQ(second.Text(0, 0), "uint");
    EXPECT_EQ(second.Text(allRowCount - 1, 0), "1");
}

TEST(SortBy, PutsCapitalsBeforeSmallLettersAndBytesAbove127Last) {
    const std::vector<KeywordEntry> entries = {MadeUpFunction("b", "any", "float", nullptr),
                                               MadeUpFunction("\xE9", "any", "float", nullptr),
                                               MadeUpFunction("B", "any", "float", nullptr),
                                               MadeUpFunction("a", "any", "float", nullptr),
                                               MadeUpFunction("_", "any", "float", nullptr),
                                               MadeUpFunction("A", "any", "float", nullptr)};
    KeywordListRows list = ListOf(entries);
    list.SortBy(keywordNameColumn);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"\xE9", "b", "a", "_", "B", "A"}));
    list.SortBy(keywordNameColumn);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"A", "B", "_", "a", "b", "\xE9"}));
}

TEST(SortBy, KeepsEqualRowsInTheirOrder) {
    const std::vector<KeywordEntry> entries = {
        MadeUpFunction("b", "int", "float", nullptr), MadeUpFunction("c", "any", "float", nullptr),
        MadeUpFunction("a", "int", "float", nullptr), MadeUpFunction("d", "any", "float", nullptr)};
    KeywordListRows list = ListOf(entries);
    list.SortBy(0);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"b", "a", "c", "d"}));
    list.SortBy(0);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"c", "d", "b", "a"}));
}

TEST(SortBy, LetsAHeaderInFrontCountAsItself) {
    const std::vector<KeywordEntry> entries = {
        MadeUpHeader("m"), MadeUpHeader("z"), MadeUpFunction("p", "any", "float", nullptr),
        MadeUpHeader("a"), MadeUpFunction("b", "any", "float", nullptr)};
    KeywordListRows list = ListOf(entries);
    list.SortBy(keywordNameColumn);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"p", "m", "z", "a", "b"}));
    list.SortBy(keywordNameColumn);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"a", "b", "m", "p", "z"}));
}

TEST(SortBy, AnswersWhereEachRowWas) {
    KeywordListRows list;
    for (const std::size_t column : {1u, 1u, 0u, 4u}) {
        SCOPED_TRACE(column);
        const std::vector<RowTexts> before = AllTextsOf(list);
        const std::vector<std::size_t> oldRows = list.SortBy(column);
        ASSERT_EQ(oldRows.size(), before.size());
        for (std::size_t row = 0; row < oldRows.size(); ++row) {
            EXPECT_EQ(TextsOf(list, row), before[oldRows[row]]);
        }
    }
}

TEST(SortBy, LeavesAnEmptyListEmpty) {
    KeywordListRows list = ListOf({});
    EXPECT_TRUE(list.SortBy(0).empty());
    EXPECT_EQ(list.Size(), 0u);
}

struct PointerRow {
    int pointerY;
    int headerHeight;
    int rowHeight;
    int topRow;
    std::optional<std::size_t> row;
};

constexpr PointerRow pointerRows[] = {
    {24, 24, 17, 0, 0},
    {40, 24, 17, 0, 0},
    {41, 24, 17, 0, 1},
    {24, 24, 17, 100, 100},
    {24 + 17 * 5 + 16, 24, 17, 100, 105},
    {24 + 17 * 171, 24, 17, 0, 171},
    {24 + 17 * 172 - 1, 24, 17, 0, 171},
    {24 + 17 * 172, 24, 17, 0, std::nullopt},  // below the last row
    {24, 24, 17, 171, 171},
    {41, 24, 17, 171, std::nullopt},
    {24, 24, 17, 172, std::nullopt},
    {7, 24, 17, 0, std::nullopt},  // a whole row above the first one
    {-1000, 24, 17, 0, std::nullopt},
    {100, 24, 0, 0, std::nullopt},  // nothing tells the height of a row
};

TEST(RowAt, FindsTheRowUnderThePointer) {
    const KeywordListRows list;
    ASSERT_EQ(list.Size(), 172u);
    for (const auto& [pointerY, headerHeight, rowHeight, topRow, row] : pointerRows) {
        SCOPED_TRACE(testing::Message() << pointerY << ' ' << rowHeight << ' ' << topRow);
        EXPECT_EQ(list.RowAt(pointerY, headerHeight, rowHeight, topRow), row);
    }
    EXPECT_EQ(ListOf({}).RowAt(24, 24, 17, 0), std::nullopt);
}

struct TopicRow {
    std::string_view name;
    std::string_view topic;
};

constexpr TopicRow topicRows[] = {
    {"abs", "function/operator.htm"},
    {"pi", "sentence/number.htm"},
    {"hex", "sentence/formula/outputkey.htm"},
    {"text", "sentence/text.htm"},
    {"define", "sentence/define.htm"},
    {"if", "function/condition.htm"},
    {"length", "function/point.htm"},
    {"integral_curve_xy", "function/variable/Integral/curve.htm"},  // no place on the page
};

TEST(TopicOfRow, GivesThePageOfTheKeyword) {
    KeywordListRows list;
    for (int sortings = 0; sortings < 3; ++sortings) {
        const std::vector<std::string> names = Names(list);
        for (const auto& [name, topic] : topicRows) {
            SCOPED_TRACE(name);
            const auto found = std::find(names.begin(), names.end(), name);
            ASSERT_NE(found, names.end());
            EXPECT_EQ(list.TopicOfRow(static_cast<std::size_t>(found - names.begin())), topic);
        }
        list.SortBy(3);
    }
}

TEST(TopicOfRow, GivesNothingForANameThatIsNoKeyword) {
    const std::vector<KeywordEntry> entries = {MadeUpFunction("Abs", "float", "any", nullptr),
                                               MadeUpFunction("abs", "float", "any", nullptr)};
    const KeywordListRows list = ListOf(entries);
    EXPECT_EQ(list.TopicOfRow(0), std::nullopt);
    EXPECT_EQ(list.TopicOfRow(1), "function/operator.htm");
}

}  // namespace
}  // namespace orvane
