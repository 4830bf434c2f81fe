#include "functions/keyword_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "functions/function_bodies.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

// --- the whole vocabulary in its stored order, one row for keywords with the same columns

struct WordRow {
    const char* names;  // ',' between keywords, '/' between aliases of one keyword
    const char* returnText;
    int group;
    int minParams;
    int maxParams;
    const char* mainParams;
    const char* optionalParams;
    int helpKind;
};

constexpr const char* seriesText =
    "variable name,float lower-limit,float step-len,pint steps,function term(name)";
constexpr const char* curveText =
    "variable name,float left-endpoint,float right-endpoint,pint steps,function Y(name)";
constexpr const char* polarText =
    "variable name,float start-radian,float end-radian,pint steps,function Radius(name)";
constexpr const char* parametricText =
    "variable name,float left-endpoint,float right-endpoint,pint steps,function X(name),function "
    "Y(name)";
constexpr const char* dateText = "uint yyyy,uint mm,uint dd";
constexpr const char* minorText = "pint row,pint column,point,point/pint row,pint column,matrix";
constexpr const char* ifText =
    "int condition/int condition,select positive/select none-zero,select zero/select zero,select "
    "negative";
constexpr const char* outputKeywords =
    "bin,binary,base2,quat,quaternary,base4,oct,octal,base8,hex,hexadecimal,base16,uint,"
    "unsigned_integer,hide,percent";
constexpr const char* bitPairs =
    "bit_and/bitwise_and,bit_or/bitwise_or,bit_xor/bitwise_xor,lsh/left_shift,rsh/right_shift";
constexpr const char* openLists =
    "max/maximum,min/minimum,sum/summary,mean/average,variance,median";
constexpr const char* matrixMakers =
    "matrix,matrix_t/matrix_transpose,matrix_inv/matrix_inverse,matrix_adj/matrix_adjoint";

constexpr WordRow wordRows[] = {
    {"pi,e,true,false", nullptr, 0, 0, 0, nullptr, nullptr, 0},
    {outputKeywords, nullptr, 1, 0, 0, nullptr, nullptr, 1},
    {"text", nullptr, 1, 0, 0, nullptr, nullptr, 2},
    {"define", nullptr, 1, 0, 0, nullptr, nullptr, 3},
    {"strlen,strsum,strsumspecial", "int", 4, 1, 1, "string", nullptr, 10},
    {"max_int,min_int,max_uint", "int", 2, 1, 1, "bits", nullptr, 4},
    {"bit_not/bitwise_not", "int", 2, 2, 2, "uint,bits", nullptr, 4},
    {bitPairs, "int", 2, 3, 3, "uint,uint,bits", nullptr, 4},
    {"sign", "float", 3, 1, 1, "float", nullptr, 6},
    {"not", "boolean", 3, 1, 1, "float", nullptr, 6},
    {"bool/boolean", "int", 3, 1, 1, "float", nullptr, 6},
    {"cmp/compare", "float", 3, 2, 2, "float,float", nullptr, 6},
    {"equals,not_equals,great_than,great_equals,less_than,less_equals", "int", 3, 2, 2,
     "float,float", nullptr, 6},
    {"int/integer", "int", 3, 1, 1, "float", nullptr, 7},
    {"frac/fractional", "float", 3, 1, 1, "float", nullptr, 7},
    {"sqrt/square_root", "float", 3, 1, 1, "ufloat", nullptr, 7},
    {"cbrt/cube_root", "float", 3, 1, 1, "float", nullptr, 7},
    {"rad/radian", "float", 3, 1, 1, "float degree", nullptr, 7},
    {"deg/degree", "float", 3, 1, 1, "float radian", nullptr, 7},
    {"inv/invert", "float", 3, 1, 1, "float", nullptr, 7},
    {"ln,log10", "float", 3, 1, 1, "pfloat", nullptr, 7},
    {"exp/exponential", "float", 3, 1, 1, "float power", nullptr, 7},
    {"sin,cos,tan,ctg", "float", 3, 1, 1, "float radian", nullptr, 7},
    {"asin,acos,atan,actg,sinh,cosh,tanh,ctgh", "float", 3, 1, 1, "float", nullptr, 7},
    {"reminder", "float", 3, 2, 2, "float,float base", nullptr, 7},
    {"log", "float", 3, 2, 2, "pfloat base,pfloat", nullptr, 7},
    {"root", "float", 3, 2, 2, "float,float root", nullptr, 7},
    {"pow/power", "float", 3, 2, 2, "float,float power", nullptr, 7},
    {"days,days_of_the_year,weekday", "int", 3, 3, 3, dateText, nullptr, 7},
    {"factorial", "int", 3, 1, 1, "uint", nullptr, 9},
    {"permutation,combination", "float", 3, 2, 2, "uint,uint", nullptr, 9},
    {openLists, "float", 3, 1, -1, "float", "float,...", 9},
    {"count", "int", 3, 1, -1, "float", "float,...", 9},
    {"sum_n/summary_n", "float", 3, 1, -1, "float power,float", "float,...", 9},
    {"length", "float", 5, 1, -1, "float/point", "float,...", 8},
    {"dot_product,angle_of_vectors", "float", 5, 2, 2, "point,point", "point", 8},
    {"triangle_area,distance_to_line", "float", 5, 3, 3, "point,point,point", "point", 8},
    {"polygon_edges,polygon_edges_open", "float", 5, 1, -1, "point/float", "point,.../float,...",
     8},
    {"point", "column vector", 6, 1, -1, "float/point", "float,...", 11},
    {"vector_row", "row vector", 6, 1, -1, "float/point", "float,...", 11},
    {"vector_clm/vector_column", "column vector", 6, 1, -1, "float/point", "float,...", 11},
    {matrixMakers, "matrix", 7, 1, -1, "point,point/matrix", "point,...", 11},
    {"matrix_det/matrix_determinant", "float", 7, 1, -1, "point,point/matrix", "point,...", 11},
    {"matrix_rank", "uint", 7, 1, -1, "point,point/matrix", "point,...", 11},
    {"matrix_minor", "matrix", 7, 1, -1, minorText, "point,...", 11},
    {"series", "float", 8, 5, 5, seriesText, nullptr, 14},
    {"product", "float", 8, 5, 5, seriesText, nullptr, 15},
    {"equation_root", "float", 8, 5, 5, curveText, nullptr, 17},
    {"integral_area_xy", "float", 8, 5, 6, curveText, "boolean option", 18},
    {"integral_area_polar", "float", 8, 5, 6, polarText, "boolean option", 18},
    {"integral_area_parametric_xy", "float", 8, 6, 6, parametricText, nullptr, 18},
    {"integral_area_parametric_polar", "float", 8, 6, 7, parametricText, "boolean option", 18},
    {"integral_curve_xy", "float", 8, 5, 6, curveText, nullptr, 19},
    {"integral_curve_polar", "float", 8, 5, 6, polarText, nullptr, 19},
    {"integral_curve_parametric", "float", 8, 6, 7, parametricText, nullptr, 19},
    {"locus_xy", "1", 8, 5, 6, curveText, nullptr, 16},
    {"locus_polar", "1", 8, 5, 6, polarText, nullptr, 16},
    {"locus_parametric", "1", 8, 6, 7, parametricText, nullptr, 16},
    {"if", "formula", 9, 3, 4, ifText, nullptr, 5},
    {"neg/negative", "any", 10, 1, 1, "any", nullptr, 13},
    {"plus,minus,times,divide", "any", 10, 2, 2, "any,any", nullptr, 13},
    {"abs/absolute", "float", 10, 1, -1, "any", nullptr, 13},
    {"complex", "complex,float", 11, -1, -1, "any,any", nullptr, 12},
};

std::vector<std::string> Split(std::string_view text, std::string_view separators) {
    std::vector<std::string> pieces;
    std::size_t from = 0;
    while (from <= text.size()) {
        const std::size_t to = std::min(text.find_first_of(separators, from), text.size());
        pieces.emplace_back(text.substr(from, to - from));
        from = to + 1;
    }
    return pieces;
}

std::vector<std::string> AllNames() {
    std::vector<std::string> names;
    for (const WordRow& words : wordRows) {
        for (std::string& name : Split(words.names, ",/")) names.push_back(std::move(name));
    }
    return names;
}

std::vector<std::string> SortedNames() {
    std::vector<std::string> names = AllNames();
    std::sort(names.begin(), names.end());
    return names;
}

// A text or its absence, so that the two can't be taken for each other.
std::string Shown(const char* text) {
    return text == nullptr ? "none" : '"' + std::string(text) + '"';
}

bool SameBody(const KeywordBody& left, const KeywordBody& right) {
    return left.scalar == right.scalar && left.step == right.step && left.value == right.value;
}

TEST(KeywordRows, HoldEveryKeywordInStoredOrder) {
    const std::vector<std::string> names = AllNames();
    ASSERT_EQ(names.size(), 151u);
    ASSERT_EQ(keywordRows.size(), 151u);
    for (std::size_t index = 0; index < names.size(); ++index) {
        EXPECT_EQ(keywordRows[index].name, names[index]) << index;
    }
}

TEST(KeywordRows, HoldTheColumnsOfEveryKeyword) {
    std::size_t index = 0;
    for (const WordRow& words : wordRows) {
        for (const std::string& name : Split(words.names, ",/")) {
            SCOPED_TRACE(name);
            const KeywordEntry& row = keywordRows[index++];
            EXPECT_EQ(row.name, name);
            EXPECT_EQ(Shown(row.returnText), Shown(words.returnText));
            EXPECT_EQ(static_cast<int>(row.group), words.group);
            EXPECT_EQ(row.minParams, words.minParams);
            EXPECT_EQ(row.maxParams, words.maxParams);
            EXPECT_EQ(Shown(row.mainParams), Shown(words.mainParams));
            EXPECT_EQ(Shown(row.optionalParams), Shown(words.optionalParams));
            EXPECT_EQ(static_cast<int>(row.helpKind), words.helpKind);
        }
    }
}

TEST(KeywordRows, GiveAliasesOneBody) {
    for (const WordRow& words : wordRows) {
        for (const std::string& aliases : Split(words.names, ",")) {
            SCOPED_TRACE(aliases);
            const std::vector<std::string> names = Split(aliases, "/");
            for (const std::string& name : names) {
                EXPECT_TRUE(SameBody(keywordTable.Find(name)->body,
                                     keywordTable.Find(names.front())->body));
            }
        }
    }
}

TEST(KeywordRows, HaveTheBodyFormOfTheirFamily) {
    enum class Form { none, scalar, step, value };
    constexpr Form forms[keywordGroupCount] = {Form::none, Form::none,  Form::scalar, Form::scalar,
                                               Form::none, Form::value, Form::value,  Form::value,
                                               Form::step, Form::none,  Form::value,  Form::value};
    for (const KeywordEntry& row : keywordRows) {
        SCOPED_TRACE(row.name);
        const Form form = forms[static_cast<int>(row.group)];
        EXPECT_EQ(row.body.scalar != nullptr, form == Form::scalar);
        EXPECT_EQ(row.body.step != nullptr, form == Form::step);
        EXPECT_EQ(row.body.value != nullptr, form == Form::value);
    }
}

TEST(KeywordRows, AreNotSymmetricalWhereTheFunctionsAreNot) {
    EXPECT_EQ(keywordTable.Find("integral_area_parametric_xy")->maxParams, 6);
    EXPECT_EQ(keywordTable.Find("integral_area_parametric_polar")->maxParams, 7);
    EXPECT_EQ(keywordTable.Find("complex")->minParams, -1);
    EXPECT_STREQ(keywordTable.Find("locus_xy")->returnText, "1");
}

// --- families

struct FamilyRow {
    ChildRule children;
    FamilyFunction evaluate;
    ChooseFunction choose;
    std::string_view word;
};

constexpr FamilyRow families[] = {
    {ChildRule::all, nullptr, nullptr, "constant"},
    {ChildRule::all, nullptr, nullptr, "header"},
    {ChildRule::all, EvaluateBits, nullptr, "bits"},
    {ChildRule::all, EvaluateNormal, nullptr, "normal"},
    {ChildRule::all, nullptr, nullptr, "string"},
    {ChildRule::all, EvaluatePoint, nullptr, "point"},
    {ChildRule::all, EvaluateVector, nullptr, "vector"},
    {ChildRule::all, EvaluateMatrix, nullptr, "matrix"},
    {ChildRule::none, EvaluateVariable, nullptr, "variable"},
    {ChildRule::chosen, nullptr, EvaluateIf, "condition"},
    {ChildRule::all, EvaluateOperator, nullptr, "normal"},
    {ChildRule::all, EvaluateComplex, nullptr, "unknown"},
};

TEST(FamilyRows, SayWhoEvaluatesEachGroup) {
    ASSERT_EQ(std::size(families), familyRows.size());
    for (int group = 0; group < keywordGroupCount; ++group) {
        SCOPED_TRACE(group);
        const FamilyEntry& family = FamilyOf(static_cast<KeywordGroup>(group));
        EXPECT_EQ(static_cast<int>(family.group), group);
        EXPECT_EQ(family.children, families[group].children);
        EXPECT_EQ(family.evaluate, families[group].evaluate);
        EXPECT_EQ(family.choose, families[group].choose);
    }
}

TEST(GroupWord, IsTheWordOfTheFamily) {
    for (const KeywordEntry& row : keywordRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(KeywordTable::GroupWord(row), families[static_cast<int>(row.group)].word);
    }
}

TEST(GroupWord, IsUnknownForAGroupThatIsNotListed) {
    KeywordEntry entry = keywordRows[0];
    entry.group = static_cast<KeywordGroup>(12);
    EXPECT_EQ(KeywordTable::GroupWord(entry), "unknown");
    entry.group = static_cast<KeywordGroup>(-1);
    EXPECT_EQ(KeywordTable::GroupWord(entry), "unknown");
}

// --- lookups

TEST(KeywordTable, IsSortedByBytes) {
    const std::vector<std::string> names = SortedNames();
    ASSERT_EQ(keywordTable.Sorted().size(), names.size());
    for (std::size_t index = 0; index < names.size(); ++index) {
        EXPECT_EQ(keywordTable.Sorted()[index]->name, names[index]) << index;
    }
}

TEST(Find, KnowsNoNeighbourOfAName) {
    const std::vector<std::string> names = SortedNames();
    for (const std::string& name : names) {
        for (std::size_t at = 0; at < name.size(); ++at) {
            for (const char other : {'a', 'n', 's', '_', '2', '\0', '\xFF'}) {
                std::string word = name;
                word[at] = other;
                EXPECT_EQ(keywordTable.IsKnown(word), std::ranges::binary_search(names, word))
                    << word;
            }
            const std::string shorter = name.substr(0, at);
            EXPECT_EQ(keywordTable.IsKnown(shorter), std::ranges::binary_search(names, shorter));
        }
        EXPECT_FALSE(keywordTable.IsKnown(name + "__"));
    }
}

TEST(Find, GivesTheRowOfEveryName) {
    for (const KeywordEntry& row : keywordRows) {
        SCOPED_TRACE(row.name);
        const bool isWord =
            row.group == KeywordGroup::constant || row.group == KeywordGroup::header;
        EXPECT_EQ(keywordTable.Find(row.name), &row);
        EXPECT_EQ(keywordTable.FindFunction(row.name), isWord ? nullptr : &row);
        EXPECT_TRUE(keywordTable.IsKnown(row.name));
        EXPECT_EQ(keywordTable.IsHeader(row.name), row.group == KeywordGroup::header);
        EXPECT_EQ(keywordTable.IsStringFunction(row.name), row.group == KeywordGroup::string);
    }
}

TEST(Find, TellsANameFromItsNeighbours) {
    const std::vector<std::string> names = SortedNames();
    for (const std::string& name : names) {
        const std::string shorter = name.substr(0, name.size() - 1);
        std::string capital = name;
        capital[0] = static_cast<char>(capital[0] - 'a' + 'A');
        for (const std::string& word : {name + "a", name + "_", name + " ", shorter, capital}) {
            SCOPED_TRACE(word);
            const bool known = std::binary_search(names.begin(), names.end(), word);
            EXPECT_EQ(keywordTable.IsKnown(word), known);
            EXPECT_EQ(keywordTable.Find(word) != nullptr, known);
            if (!known) {
                EXPECT_EQ(keywordTable.FindFunction(word), nullptr);
                EXPECT_FALSE(keywordTable.IsHeader(word));
                EXPECT_FALSE(keywordTable.IsStringFunction(word));
            }
        }
    }
}

TEST(Find, KnowsNothingElse) {
    for (const char* word : {"", "Hex", "HEX", "Sin", "a", "zzz", "base10", "~", "\xE4", "0"}) {
        SCOPED_TRACE(word);
        EXPECT_EQ(keywordTable.Find(word), nullptr);
        EXPECT_FALSE(keywordTable.IsKnown(word));
    }
}

TEST(Find, LooksAtNoMoreThanTheSpan) {
    const std::string_view text = "sinh(1)";
    EXPECT_STREQ(keywordTable.Find(text.substr(0, 3))->name, "sin");
    EXPECT_STREQ(keywordTable.Find(text.substr(0, 4))->name, "sinh");
    EXPECT_EQ(keywordTable.Find(text.substr(0, 2)), nullptr);
    EXPECT_EQ(keywordTable.Find(text.substr(0, 5)), nullptr);
}

TEST(Find, TellsHeadersFromFunctionsThatAreTypeWordsToo) {
    EXPECT_EQ(keywordTable.Find("hex")->group, KeywordGroup::header);
    for (const char* word : {"uint", "text"}) {
        EXPECT_TRUE(keywordTable.IsHeader(word)) << word;
        EXPECT_EQ(keywordTable.FindFunction(word), nullptr) << word;
    }
    for (const char* word : {"int", "point", "matrix", "boolean"}) {
        EXPECT_FALSE(keywordTable.IsHeader(word)) << word;
        EXPECT_NE(keywordTable.FindFunction(word), nullptr) << word;
    }
}

// --- the incremental search

// The search restated step by step, on texts that end with a NUL.
int SearchByPrefix(const std::vector<std::string>& names, std::string_view typed) {
    int result = -1;
    std::size_t i = 0;
    for (std::size_t k = 0; k < typed.size(); ++k) {
        if (i >= names.size()) break;
        for (;;) {
            const char inRow = k < names[i].size() ? names[i][k] : '\0';
            if (inRow == typed[k]) break;
            if (typed[k] < inRow || i + 1 == names.size()) return result;
            ++i;
        }
        result = static_cast<int>(i);
    }
    return result;
}

TEST(FindByPrefix, FollowsItsSteps) {
    const std::vector<std::string> names = SortedNames();
    std::vector<std::string> typed;
    for (const std::string& name : names) {
        for (std::size_t length = 1; length <= name.size(); ++length) {
            for (const char* tail : {"", "a", "m", "z", "_", "1", "zz", "oa"}) {
                typed.push_back(name.substr(0, length) + tail);
            }
        }
    }
    const std::string_view letters = "_019AZabcdefghijklmnopqrstuvwxyz~";
    for (const char first : letters) {
        typed.push_back({first});
        for (const char second : letters) {
            typed.push_back({first, second});
            for (const char third : letters) typed.push_back({first, second, third});
        }
    }
    for (const std::string& word : typed) {
        ASSERT_EQ(keywordTable.FindByPrefix(word), SearchByPrefix(names, word)) << word;
    }
}

struct PrefixRow {
    const char* typed;
    const char* found;  // null: no row
};

constexpr PrefixRow prefixRows[] = {
    {"", nullptr},
    {"a", "abs"},
    {"b", "base16"},
    {"sq", "sqrt"},
    {"sqz", "sqrt"},  // beyond all rows: the last match stays
    {"sz", "series"},
    {"squ", "square_root"},
    {"weekday", "weekday"},
    {"weekdays", "weekday"},
    {"A", nullptr},
    {"0", nullptr},
    {"_", nullptr},
    {"j", nullptr},
    {"jabs", nullptr},
    {"z", nullptr},
    {"\xE4", nullptr},
    {"a\xE4", "abs"},
    {"ab ", "abs"},
    // A later row with that character in that place catches the walk, however it begins.
    {"dx", "exp"},
    {"dxp", "exp"},
    {"squares", "strsumspecial"},
    {"pz", "percent"},
    {"ew", "e"},
};

TEST(FindByPrefix, ComesToRestOnTheLastMatch) {
    for (const auto& [typed, found] : prefixRows) {
        SCOPED_TRACE(typed);
        const int index = keywordTable.FindByPrefix(typed);
        if (found == nullptr) {
            EXPECT_EQ(index, -1);
        } else {
            ASSERT_GE(index, 0);
            EXPECT_STREQ(keywordTable.Sorted()[static_cast<std::size_t>(index)]->name, found);
        }
    }
}

TEST(FindByPrefix, FindsEveryWholeName) {
    for (const KeywordEntry* row : keywordTable.Sorted()) {
        SCOPED_TRACE(row->name);
        const int index = keywordTable.FindByPrefix(row->name);
        ASSERT_GE(index, 0);
        EXPECT_EQ(keywordTable.Sorted()[static_cast<std::size_t>(index)], row);
    }
}

// --- constants and widths

struct ConstantRow {
    const char* word;
    double value;
    const char* text;
};

constexpr ConstantRow constantRows[] = {
    {"e", 2.718281828459045, "2.718281828459045235360287471352"},
    {"pi", 3.141592653589793, "3.141592653589793238462643383279"},
    {"true", 1.0, "+1"},
    {"false", 0.0, "0"},
    {"fa123", 0.0, "0"},  // five letters that begin with "fa" are enough
    {"falls", 0.0, "0"},
    {"fa___", 0.0, "0"},
};

TEST(ConstantValue, ReadsTheConstants) {
    for (const auto& [word, value, text] : constantRows) {
        SCOPED_TRACE(word);
        ASSERT_TRUE(KeywordTable::ConstantValue(word).has_value());
        EXPECT_TRUE(test::SameBits(*KeywordTable::ConstantValue(word), value));
        EXPECT_EQ(KeywordTable::ConstantText(word), text);
    }
}

TEST(ConstantValue, ReadsNothingElse) {
    for (const char* word : {"", "E", "x", "Pi", "PI", "pe", "True", "trua", "truth", "tru",
                             "False", "fals", "falsey", "fFlse", "afact", "ee", "pie"}) {
        SCOPED_TRACE(word);
        EXPECT_FALSE(KeywordTable::ConstantValue(word).has_value());
        EXPECT_FALSE(KeywordTable::ConstantText(word).has_value());
    }
}

TEST(LongestNames, AreTheLongestKeywordAndCondition) {
    const KeywordTable::WidestTexts widest = keywordTable.LongestNames();
    EXPECT_EQ(widest.name, "integral_area_parametric_polar");
    EXPECT_EQ(widest.groupWord, "condition");
    for (const std::string& name : AllNames()) EXPECT_LE(name.size(), widest.name.size()) << name;
}

}  // namespace
}  // namespace orvane
