#include "functions/keyword_texts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace orvane {

// So that a failed comparison shows what stands in a line.
void PrintTo(const Signature& signature, std::ostream* out) {
    *out << '[' << signature.mainParams << '|' << signature.optionalParams << ']';
}

void PrintTo(const KeywordLine& line, std::ostream* out) {
    *out << line.returnText << '|' << line.name << '|' << line.opening << '|'
         << line.signature.mainParams << '|' << line.signature.optionalParams << '|'
         << line.closing;
}

namespace {

struct SignatureRow {
    const char* name;
    std::vector<Signature> signatures;
};

const SignatureRow signatureRows[] = {
    {"pi", {}},
    {"hex", {}},
    {"strlen", {{"string", ""}}},
    {"bit_and", {{"uint ,uint ,bits", ""}}},
    {"deg", {{"float radian", ""}}},
    {"reminder", {{"float ,float base", ""}}},
    {"sum", {{"float", " ,float ,..."}}},
    {"sum_n", {{"float power ,float", " ,float ,..."}}},
    {"dot_product", {{"point ,point", " ,point"}}},
    {"length", {{"float", " ,float ,..."}, {"point", ""}}},
    {"polygon_edges", {{"point", " ,point ,..."}, {"float", " ,float ,..."}}},
    {"matrix", {{"point ,point", " ,point ,..."}, {"matrix", ""}}},
    {"matrix_minor",
     {{"pint row ,pint column ,point ,point", " ,point ,..."},
      {"pint row ,pint column ,matrix", ""}}},
    {"if",
     {{"int condition", ""},
      {"int condition ,select positive", ""},
      {"select none-zero ,select zero", ""},
      {"select zero ,select negative", ""}}},
    {"integral_area_xy",
     {{"variable name ,float left-endpoint ,float right-endpoint ,pint steps ,function Y(name)",
       " ,boolean option"}}},
    {"complex", {{"any ,any", ""}}},
};

TEST(SignaturesOf, CutsFormsAndSpacesCommas) {
    for (const auto& [name, signatures] : signatureRows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(SignaturesOf(*keywordTable.Find(name)), signatures);
    }
}

TEST(SignaturesOf, LeavesNoCommaWithoutABlank) {
    for (const KeywordEntry& row : keywordRows) {
        SCOPED_TRACE(row.name);
        for (const Signature& signature : SignaturesOf(row)) {
            const std::string whole = signature.mainParams + signature.optionalParams;
            EXPECT_EQ(whole.find('/'), std::string::npos);
            for (std::size_t at = whole.find(','); at != std::string::npos;
                 at = whole.find(',', at + 1)) {
                ASSERT_GT(at, 0u);
                EXPECT_EQ(whole[at - 1], ' ');
            }
        }
    }
}

KeywordEntry MadeUpRow(const char* returnText, const char* mainParams, const char* optionalParams) {
    return {"made_up", returnText, KeywordGroup::normal, 1,
            1,         mainParams, optionalParams,       HelpKind::normal};
}

TEST(LinesOf, GivesAFunctionOneLineForEachForm) {
    EXPECT_EQ(LinesOf(*keywordTable.Find("sin")),
              (std::vector<KeywordLine>{{"float", "sin", "(", {"float radian", ""}, ")"}}));
    EXPECT_EQ(LinesOf(*keywordTable.Find("length")),
              (std::vector<KeywordLine>{{"float", "length", "(", {"float", " ,float ,..."}, ")"},
                                        {"float", "length", "(", {"point", ""}, ")"}}));
    EXPECT_EQ(LinesOf(*keywordTable.Find("complex")),
              (std::vector<KeywordLine>{{"complex,float", "complex", "(", {"any ,any", ""}, ")"}}));
    EXPECT_EQ(LinesOf(*keywordTable.Find("if")).size(), 4u);
}

TEST(LinesOf, ShowsTheReturnTextOfCurvesAsItStands) {
    const std::vector<KeywordLine> lines = LinesOf(*keywordTable.Find("locus_polar"));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].returnText, "1");
}

TEST(LinesOf, PutsOneOptionalFormBesideTheFirstOfThree) {
    const KeywordEntry row = MadeUpRow("any", "float/point,point/matrix", "float,...");
    EXPECT_EQ(LinesOf(row),
              (std::vector<KeywordLine>{{"any", "made_up", "(", {"float", " ,float ,..."}, ")"},
                                        {"any", "made_up", "(", {"point ,point", ""}, ")"},
                                        {"any", "made_up", "(", {"matrix", ""}, ")"}}));
}

TEST(LinesOf, DropsOptionalFormsBeyondTheMainOnes) {
    const KeywordEntry row = MadeUpRow("any", "float", "float/point");
    EXPECT_EQ(LinesOf(row),
              (std::vector<KeywordLine>{{"any", "made_up", "(", {"float", " ,float"}, ")"}}));
}

TEST(LinesOf, GivesNoLineForAFunctionWithoutParameters) {
    EXPECT_TRUE(LinesOf(MadeUpRow("any", nullptr, nullptr)).empty());
    EXPECT_TRUE(LinesOf(MadeUpRow("any", nullptr, "float,...")).empty());
}

struct WordRow {
    const char* name;
    const char* kind;
    const char* digits;
};

constexpr WordRow wordRows[] = {
    {"e", "<constant>", "2.718281828459045235360287471352"},
    {"pi", "<constant>", "3.141592653589793238462643383279"},
    {"true", "<constant>", "+1"},
    {"false", "<constant>", "0"},
    {"hex", "<header>", ""},
    {"uint", "<header>", ""},
    {"text", "<header>", ""},
    {"define", "<header>", ""},
};

TEST(LinesOf, GivesAConstantOrHeaderOneLineWithoutBrackets) {
    for (const auto& [name, kind, digits] : wordRows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(LinesOf(*keywordTable.Find(name)),
                  (std::vector<KeywordLine>{{kind, name, "", {digits, ""}, ""}}));
    }
}

TEST(LinesOf, CoversTheWholeTable) {
    int constants = 0;
    int headers = 0;
    int signatures = 0;
    for (const KeywordEntry* row : keywordTable.Sorted()) {
        for (const KeywordLine& line : LinesOf(*row)) {
            EXPECT_EQ(line.name, row->name);
            const bool isFunction = row->returnText != nullptr;
            EXPECT_EQ(line.opening, isFunction ? "(" : "") << row->name;
            EXPECT_EQ(line.closing, isFunction ? ")" : "") << row->name;
            constants += line.returnText == "<constant>";
            headers += line.returnText == "<header>";
            signatures += isFunction;
        }
    }
    EXPECT_EQ(constants, 4);
    EXPECT_EQ(headers, 18);
    // 129 functions; length, two of edges, four vector builders and eleven matrix functions have
    // a second form, `if` three more.
    EXPECT_EQ(signatures, 129 + 1 + 2 + 4 + 11 + 3);
}

}  // namespace
}  // namespace orvane
