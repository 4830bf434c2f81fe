#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <random>

#include "tests/cli/tool_checks.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using namespace orvane::test;

Json RunOf(std::string_view sheet, int status = 0) {
    return JsonOf({"calc", "--json"}, sheet, status);
}

// One number of the JSON; those that are not finite are words.
double NumberOf(const Json& number) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (number.is_number()) return number.get<double>();
    if (number == "inf") return infinity;
    if (number == "-inf") return -infinity;
    EXPECT_EQ(number, "nan");
    return std::numeric_limits<double>::quiet_NaN();
}

TEST(RunJson, HasItsKeysInOrder) {
    const Json run = RunOf("1; locus_xy(x, 0, 1, 1, x)");
    EXPECT_EQ(KeysOf(run), (std::vector<std::string>{"positionText", "resultText", "errorText",
                                                     "sentences", "curves"}));
    EXPECT_EQ(KeysOf(run["sentences"][0]),
              (std::vector<std::string>{"number", "kind", "header", "name", "text", "evaluated",
                                        "complex", "rows", "error"}));
    EXPECT_EQ(KeysOf(run["curves"][0]),
              (std::vector<std::string>{"sentence", "kind", "points", "dropped", "minX", "maxX",
                                        "minY", "maxY", "stoppedEarly", "lastParameter"}));
}

TEST(RunJson, HasOneTypeForEachKey) {
    for (const auto& [sheet, status] : {std::pair{"1;text:a;define:b=2", 0}, {"1;ln(0)", 1}}) {
        const Json run = RunOf(sheet, status);
        for (const std::string key : {"positionText", "resultText", "errorText"}) {
            EXPECT_TRUE(run[key].is_string()) << key;
        }
        EXPECT_TRUE(run["curves"].is_array());
        for (const Json& sentence : run["sentences"]) {
            EXPECT_TRUE(sentence["number"].is_number_integer());
            for (const std::string key : {"kind", "header", "name", "text", "error"}) {
                EXPECT_TRUE(sentence[key].is_string()) << key;
            }
            EXPECT_TRUE(sentence["evaluated"].is_boolean());
            EXPECT_TRUE(sentence["complex"].is_boolean());
            EXPECT_TRUE(sentence["rows"].is_array());
        }
    }
}

TEST(RunJson, TellsEverySentenceOfTheSheet) {
    const Json expected = Json::parse(R"json([
        {"number": 1, "kind": "define", "header": "define", "name": "k", "text": "2",
         "evaluated": false, "complex": false, "rows": [], "error": ""},
        {"number": 2, "kind": "text", "header": "text", "name": "", "text": " The answer",
         "evaluated": false, "complex": false, "rows": [], "error": ""},
        {"number": 3, "kind": "calculation", "header": "hex", "name": "a",
         "text": "plus(power(2,3),1)",
         "evaluated": true, "complex": false, "rows": [[9.0]], "error": ""},
        {"number": 4, "kind": "calculation", "header": "", "name": "b",
         "text": "times(a,3.14159265358979311599796346854419)",
         "evaluated": true, "complex": false, "rows": [[28.274333882308138]], "error": ""}
    ])json");
    const Json run =
        RunOf("define: k = 2;\ntext: The answer;\nhex: a = k^3 + 1; // comment\nb = a * pi;");
    EXPECT_EQ(run["sentences"], expected);
    EXPECT_EQ(run["curves"], Json::array());
}

struct RowsRow {
    std::string sheet;
    Rows rows;
    bool complex;
};
const RowsRow rowsRows[] = {
    {"5", {{5}}, false},
    {"point(1,2,3)", {{1}, {2}, {3}}, false},
    {"(1,2,3)", {{1}, {2}, {3}}, false},
    {"vector_row(1,2,3)", {{1, 2, 3}}, false},
    {"matrix(point(1,2,3),point(4,5,6))", {{1, 2, 3}, {4, 5, 6}}, false},
    {"complex(1,2)", {{1, 2}}, true},
    {"complex(1,0)", {{1}}, false},
    {"complex(1,2) - complex(0,2)", {{1, 0}}, true},
    {"vector_row(1,2)", {{1, 2}}, false},
};

TEST(RunJson, GivesTheRowsOfEveryShape) {
    for (const auto& [sheet, rows, complex] : rowsRows) {
        SCOPED_TRACE(sheet);
        const Json sentence = RunOf(sheet)["sentences"][0];
        EXPECT_EQ(sentence["rows"], Json(rows));
        EXPECT_EQ(sentence["complex"], complex);
        EXPECT_EQ(sentence["evaluated"], true);
    }
}

TEST(RunJson, TakesTextsThatLookLikeItsLists) {
    const std::string words = R"("rows":[], "points":[], \"rows\":[])";
    const Json run = RunOf("text:" + words + "; locus_xy(x,0,1,1,x)");
    EXPECT_EQ(run["sentences"][0]["text"], words);
    EXPECT_EQ(run["sentences"][0]["rows"], Json::array());
    EXPECT_EQ(run["sentences"][1]["rows"], Json::parse("[[1.0]]"));
    EXPECT_EQ(run["curves"][0]["points"], Json::parse("[[0.0,0.0,true],[1.0,1.0,false]]"));
    // The words stand in front of the rows of a sentence with a value.
    const Json failed = RunOf("1+strlen(" + words + ")", 1);
    EXPECT_EQ(failed["sentences"][0]["rows"], Json::array());
}

TEST(RunJson, TellsAnEmptyValueFromNoValue) {
    const Json sentences = RunOf("equation_root(x, 1, 2, 10, x); y")["sentences"];
    EXPECT_EQ(sentences[0]["evaluated"], true);
    EXPECT_EQ(sentences[0]["rows"], Json::array());
    EXPECT_EQ(sentences[1]["evaluated"], false);
    EXPECT_EQ(sentences[1]["rows"], Json::array());
    EXPECT_EQ(sentences[1]["error"], "");
}

TEST(RunJson, KeepsTheErrorOfASentenceWithIt) {
    const std::string message = "E001-01 sentence  2: function \"nosuch\": unknown function.";
    const Json run = RunOf("1;a=nosuch(1);3", 1);
    EXPECT_EQ(run["errorText"], "");
    EXPECT_EQ(run["resultText"], "    +1 \t\na = " + message + "\n    +3 \t\n");
    EXPECT_EQ(run["sentences"][0]["error"], "");
    EXPECT_EQ(run["sentences"][1]["error"], message);
    EXPECT_EQ(run["sentences"][1]["evaluated"], false);
    EXPECT_EQ(run["sentences"][1]["rows"], Json::array());
    EXPECT_EQ(run["sentences"][2]["rows"], Json::parse("[[3.0]]"));
}

TEST(RunJson, PutsACompileErrorBehindTheReport) {
    const std::string message = "C002-10: operator \"+\" is used incorrect in sentence 1.";
    const Json run = RunOf("1+;2", 1);
    EXPECT_EQ(run["errorText"], message);
    EXPECT_EQ(run["resultText"],
              "sentence 1  was not calculated.\nsentence 2  was not calculated.\n" + message);
    ASSERT_EQ(run["sentences"].size(), 2u);
    for (const Json& sentence : run["sentences"]) {
        EXPECT_EQ(sentence["error"], "");
        EXPECT_EQ(sentence["evaluated"], false);
    }

    const Json cut = RunOf("\"", 1);
    EXPECT_EQ(cut["errorText"], "C001-01: string in line 1 is not matched properly.");
    EXPECT_EQ(cut["resultText"], cut["errorText"]);
    EXPECT_EQ(cut["sentences"], Json::array());
}

TEST(RunJson, GivesThePositionTextApart) {
    const Json run = JsonOf({"calc", "--json", "--position-line"}, "a=1.5");
    EXPECT_EQ(run["positionText"], "    21.1\r\n    -- -\r\n");
    EXPECT_EQ(run["resultText"], "a = +1.5 \t\n");
}

TEST(RunJson, GivesEveryByteAsTheCodePointOfTheSameNumber) {
    std::string text;
    for (int byte = 1; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        if (c != ';' && c != '"' && c != '\r') text += c;
    }
    text += "\";\"";  // in a string, where it ends no sentence
    const Json run = RunOf("text:" + text);
    ASSERT_EQ(run["sentences"].size(), 1u);
    EXPECT_EQ(BytesOf(run["sentences"][0]["text"]), text);
    EXPECT_EQ(BytesOf(run["resultText"]), "\n" + text + "\n");
}

TEST(RunJson, GivesACarriageReturnAsTheBlankThatItCountsAs) {
    EXPECT_EQ(RunOf("text:a\rb")["sentences"][0]["text"], "a b");
}

TEST(RunJson, GivesBytesInErrorsAsCodePoints) {
    const Json run = RunOf("\xff", 1);
    EXPECT_EQ(BytesOf(run["errorText"]),
              "C002-02: the symbol \"\xff\" is unrecognized in sentence 1.");
}

double StandardValue(const std::string& literal) {
    double value = 0;
    const auto read = std::from_chars(literal.data(), literal.data() + literal.size(), value,
                                      std::chars_format::fixed);
    if (read.ec == std::errc::result_out_of_range) return std::numeric_limits<double>::infinity();
    return value;
}

// Puts all literals in one sheet, `before` in front of each, and compares to the last bit.
void ExpectReadBack(const std::vector<std::string>& literals, std::string_view before = "",
                    double factor = 1.0) {
    std::string sheet;
    for (const std::string& literal : literals) sheet.append(before).append(literal).append(";\n");
    const Json sentences = RunOf(sheet)["sentences"];
    ASSERT_EQ(sentences.size(), literals.size());
    for (std::size_t index = 0; index < literals.size(); ++index) {
        const Json& rows = sentences[index]["rows"];
        const double expected = StandardValue(literals[index]) * factor;
        EXPECT_TRUE(SameBits(NumberOf(rows.at(0).at(0)), expected))
            << literals[index] << " gives " << rows;
    }
}

TEST(RunJson, GivesNumbersThatReadBackAsTheSameDouble) {
    std::mt19937_64 random(20);  // the same literals in every run
    const auto literal = [&random](std::size_t wholes, std::size_t decimals) {
        std::string text(wholes + 1 + decimals, '.');
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (at != wholes) text[at] = static_cast<char>('0' + random() % 10);
        }
        return text;
    };
    std::vector<std::string> literals = {"0",
                                         "0.1",
                                         "0.3",
                                         "123456789012345678901234567890",
                                         "0.00000000000000000000000000000001",
                                         "9007199254740993",
                                         "9007199254740991",
                                         "4503599627370496.5",
                                         "4503599627370497.5"};
    for (int count = 0; count < 3000; ++count) {
        literals.push_back(literal(1 + random() % 20, 1 + random() % 32));
        literals.push_back(literal(1, 32));
    }
    ExpectReadBack(literals);
    ExpectReadBack(literals, "-", -1.0);
}

std::string PowerOfTen(std::size_t power) {
    std::string literal(power + 1, '0');
    literal.front() = '1';
    return literal;
}

TEST(RunJson, GivesVeryLargeNumbersThatReadBackAsTheSameDouble) {
    std::array<char, 400> largest;
    const auto end = std::to_chars(largest.data(), largest.data() + largest.size(),
                                   std::numeric_limits<double>::max(), std::chars_format::fixed);
    const std::vector<std::string> literals = {
        PowerOfTen(22),
        PowerOfTen(23),
        PowerOfTen(300),
        PowerOfTen(308),
        std::string(308, '9'),
        std::string(400, '9'),
        std::string(largest.data(), end.ptr),
    };
    ExpectReadBack(literals);
    ExpectReadBack(literals, "-", -1.0);
}

TEST(RunJson, GivesWordsForNumbersThatAreNotFinite) {
    const std::string endless(400, '9');
    const std::pair<std::string, std::string> words[] = {
        {endless, R"([["inf"]])"},
        {"-" + endless, R"([["-inf"]])"},
        {endless + "-" + endless, R"([["nan"]])"},
        {"point(" + endless + ", 1, -" + endless + ")", R"([["inf"], [1.0], ["-inf"]])"},
        {"complex(1, " + endless + ")", R"([[1.0, "inf"]])"},
    };
    for (const auto& [sheet, rows] : words) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(RunOf(sheet)["sentences"][0]["rows"], Json::parse(rows));
    }
}

TEST(RunJson, TellsMinusZeroFromZero) {
    const Json sentences = RunOf("-0; 0; point(0, -0); 0 * (-1)")["sentences"];
    EXPECT_TRUE(SameBits(NumberOf(sentences[0]["rows"][0][0]), -0.0));
    EXPECT_TRUE(SameBits(NumberOf(sentences[1]["rows"][0][0]), 0.0));
    EXPECT_TRUE(SameBits(NumberOf(sentences[2]["rows"][0][0]), 0.0));
    EXPECT_TRUE(SameBits(NumberOf(sentences[2]["rows"][1][0]), -0.0));
    EXPECT_TRUE(SameBits(NumberOf(sentences[3]["rows"][0][0]), -0.0));
}

TEST(RunJson, DoesNotFollowThePrecision) {
    const Json run = JsonOf({"calc", "--json", "--precision", "0"}, "1/3");
    EXPECT_TRUE(SameBits(NumberOf(run["sentences"][0]["rows"][0][0]), 1.0 / 3.0));
    EXPECT_EQ(run["resultText"], "+ \t\n");
}

// The output is printed in pieces.
TEST(RunJson, IsOneObjectOfAnyLength) {
    constexpr int size = 500;
    std::string numbers = "1";
    for (int number = 2; number <= size; ++number)
        numbers.append(",").append(std::to_string(number));
    std::string sheet = "text:";
    sheet += std::string(3'000'000, 'x');
    sheet.append("; hide: c = point(").append(numbers).append("); hide: r = vector_row(");
    sheet.append(numbers).append("); hide: m = c * r;");
    const Json run = RunOf(sheet);
    EXPECT_EQ(run["resultText"].get<std::string>().find_first_not_of("x\n"), std::string::npos);
    EXPECT_GE(run["resultText"].get<std::string>().size(), 3'000'000u);
    const Json& rows = run["sentences"][3]["rows"];
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(size));
    for (int row = 0; row < size; ++row) {
        ASSERT_EQ(rows[row].size(), static_cast<std::size_t>(size));
        for (int cell = 0; cell < size; ++cell) {
            ASSERT_EQ(rows[row][cell], (row + 1.0) * (cell + 1.0)) << row << ", " << cell;
        }
    }
}

}  // namespace
}  // namespace orvane
