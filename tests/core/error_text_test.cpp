#include "core/error_text.h"

#include <gtest/gtest.h>

#include <string>

namespace orvane {
namespace {

struct NumberRow {
    int sentence;
    const char* line;
};

constexpr NumberRow numberRows[] = {
    {0, "E002-01 sentence  1: it went wrong."},   {8, "E002-01 sentence  9: it went wrong."},
    {9, "E002-01 sentence 10: it went wrong."},   {98, "E002-01 sentence 99: it went wrong."},
    {99, "E002-01 sentence 100: it went wrong."}, {12344, "E002-01 sentence 12345: it went wrong."},
};

TEST(SentenceErrorText, ShowsTheNumberInAFieldOfTwo) {
    for (const auto& [sentence, line] : numberRows) {
        std::string errorText;
        EXPECT_FALSE(SentenceErrorText({"E002-", "01"}, sentence, "it went wrong", errorText));
        EXPECT_EQ(errorText, line);
    }
}

TEST(SentenceErrorText, ShowsAClassWithoutACode) {
    std::string errorText;
    SentenceErrorText({"E006-", ""}, 6, "parameter must be a positive integer", errorText);
    EXPECT_EQ(errorText, "E006- sentence  7: parameter must be a positive integer.");
}

struct QuotedRow {
    const char* piece;
    const char* line;
};

constexpr QuotedRow quotedRows[] = {
    {"strlen \"a\"", "E003-01 sentence  1: \"strlen \"a\"\"."},
    {"  strlen  ", "E003-01 sentence  1: \"strlen\"."},
    {"   ", "E003-01 sentence  1: \"\"."},
    {"", "E003-01 sentence  1: \"\"."},
    {"123456789012345678901234567890", "E003-01 sentence  1: \"123456789012345678901234567890\"."},
    {" 123456789012345678901234567890 ",
     "E003-01 sentence  1: \"123456789012345678901234567890\"."},
    {"1234567890123456789012345678901", "E003-01 sentence  1: \"123456789012345678901234567...\"."},
};

TEST(QuotedErrorText, ShortensThePieceToThirtyCharacters) {
    for (const auto& [piece, line] : quotedRows) {
        std::string errorText;
        EXPECT_FALSE(QuotedErrorText({"E003-", "01"}, 0, piece, errorText));
        EXPECT_EQ(errorText, line);
    }
}

struct FunctionRow {
    ErrorCode code;
    int sentence;
    const char* name;
    const char* message;
    const char* line;
};

constexpr FunctionRow functionRows[] = {
    {{"E005-", "03"},
     0,
     "matrix_inv",
     "determinant of the matrix is 0",
     "E005-03 sentence  1: function \"matrix_inv\": determinant of the matrix is 0."},
    {{"E008-", "10"},
     20,
     "series",
     "forth parameter is step count,which must be an integer >= 1",
     "E008-10 sentence 21: function \"series\": forth parameter is step count,which must be an "
     "integer >= 1."},
    {{"E010-", "01"},
     99,
     "length",
     "parameter signiture is incorrect",
     "E010-01 sentence 100: function \"length\": parameter signiture is incorrect."},
    {{"E006-", ""},
     6,
     "bit_and",
     "first param must be an integer >= 0",
     "E006- sentence  7: function \"bit_and\": first param must be an integer >= 0."},
    {{"E004-", "01"},
     1,
     "",
     "parameters are incorrect",
     "E004-01 sentence  2: function \"\": parameters are incorrect."},
};

TEST(FunctionErrorText, NamesTheFunction) {
    for (const auto& [code, sentence, name, message, line] : functionRows) {
        std::string errorText;
        EXPECT_FALSE(FunctionErrorText(code, sentence, name, message, errorText));
        EXPECT_EQ(errorText, line);
    }
}

TEST(FunctionErrorText, ShowsNamesAndMessagesWhole) {
    const std::string name(5000, 'x');
    std::string errorText;
    FunctionErrorText({"E001-", "01"}, 0, name, "100% of %s", errorText);
    EXPECT_EQ(errorText, "E001-01 sentence  1: function \"" + name + "\": 100% of %s.");
}

TEST(NodeErrorText, NamesTheFunctionOnlyWhereThereIsOne) {
    FunctionNode node;
    std::string errorText;
    EXPECT_FALSE(
        NodeErrorText({"E006-", "05"}, 3, node, "parameter count is incorrect", errorText));
    EXPECT_EQ(errorText, "E006-05 sentence  4: parameter count is incorrect.");

    node.functionName = "log";
    EXPECT_FALSE(
        NodeErrorText({"E006-", "05"}, 3, node, "parameter count is incorrect", errorText));
    EXPECT_EQ(errorText, "E006-05 sentence  4: function \"log\": parameter count is incorrect.");
}

TEST(NonFiniteError, SaysThatTheResultIsNoNumber) {
    std::string errorText;
    EXPECT_FALSE(NonFiniteError({"E006-", "10"}, 6, "ln", errorText));
    EXPECT_EQ(errorText,
              "E006-10 sentence  7: function \"ln\": generates an infinite or unaccepted number.");
}

TEST(ErrorText, IsReplacedAsAWhole) {
    std::string errorText;
    FunctionErrorText({"E011-", "02"}, 0, "length", "point parameter is incorrect", errorText);
    FunctionErrorText({"E010-", "01"}, 0, "length", "point count is incorrect", errorText);
    EXPECT_EQ(errorText, "E010-01 sentence  1: function \"length\": point count is incorrect.");
    QuotedErrorText({"E003-", "02"}, 0, "strlen()", errorText);
    EXPECT_EQ(errorText, "E003-02 sentence  1: \"strlen()\".");
    SentenceErrorText({"E002-", "01"}, 0, "x", errorText);
    EXPECT_EQ(errorText, "E002-01 sentence  1: x.");
}

TEST(FillForm, GivesEachSlotTheNextArgument) {
    EXPECT_EQ(FillForm("C002-06: the number \"%s\" is unrecognized in sentence %d.", {"1e5", "3"}),
              "C002-06: the number \"1e5\" is unrecognized in sentence 3.");
    EXPECT_EQ(FillForm("%s%d%s", {"a", "", "c"}), "ac");
    EXPECT_EQ(FillForm("no slot", {}), "no slot");
    EXPECT_EQ(FillForm("", {"a"}), "");
}

TEST(FillForm, DoesNotFillWhatAnArgumentBringsIn) {
    EXPECT_EQ(FillForm("\"%s\" in sentence %d.", {"a %s b %d", "4"}),
              "\"a %s b %d\" in sentence 4.");
}

TEST(NumberOf, CountsFromOne) {
    EXPECT_EQ(NumberOf(0), "1");
    EXPECT_EQ(NumberOf(9), "10");
    EXPECT_EQ(NumberOf(123456), "123457");
}

}  // namespace
}  // namespace orvane
