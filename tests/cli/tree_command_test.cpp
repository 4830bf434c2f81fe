#include <gtest/gtest.h>

#include "tests/cli/tool_checks.h"

namespace orvane {
namespace {

using namespace orvane::test;

struct TreeRow {
    std::string sheet;
    std::string output;
    int status = 0;
};
const TreeRow treeRows[] = {
    {"a = 1 + 2 * 3",
     "Sentence 1, a\n"
     "  function plus = 7\n"
     "    number = 1\n"
     "    function times = 6\n"
     "      number = 2\n"
     "      number = 3\n"},
    // Only formulas have a tree; all sentences are counted.
    {"define: k = 2; text: T; hex: b = k;",
     "Sentence 3, hex, b\n"
     "  number = 2\n"},
    {"a = 0.1; b = a + x; x",
     "Sentence 1, a\n"
     "  number = 0.1\n"
     "Sentence 2, b\n"
     "  function plus, not evaluated\n"
     "    formula a = 0.1\n"
     "    variable x, not evaluated\n"
     "  E009-02 sentence  2: function \"plus\": unknown error.\n"
     "Sentence 3\n"
     "  variable x, not evaluated\n",
     1},
    {"(1, 2); vector_row(1, 2); complex(1, 2)",
     "Sentence 1\n"
     "  brace = (1; 2)\n"
     "    number = 1\n"
     "    number = 2\n"
     "Sentence 2\n"
     "  function vector_row = (1, 2)\n"
     "    number = 1\n"
     "    number = 2\n"
     "Sentence 3\n"
     "  function complex = complex (1, 2)\n"
     "    number = 1\n"
     "    number = 2\n"},
    {"matrix(point(1, 2), point(3, 4))",
     "Sentence 1\n"
     "  function matrix = (1, 2; 3, 4)\n"
     "    function point = (1; 2)\n"
     "      number = 1\n"
     "      number = 2\n"
     "    function point = (3; 4)\n"
     "      number = 3\n"
     "      number = 4\n"},
    // What a condition did not choose was never looked at.
    {"if(1, 2, nosuch(3))",
     "Sentence 1\n"
     "  function if = 2\n"
     "    number = 1\n"
     "    number = 2\n"
     "    function nosuch, not evaluated\n"
     "      number = 3\n"},
    {"nosuch(1, 2); 3",
     "Sentence 1\n"
     "  function nosuch, not evaluated\n"
     "    number = 1\n"
     "    number = 2\n"
     "  E001-01 sentence  1: function \"nosuch\": unknown function.\n"
     "Sentence 2\n"
     "  number = 3\n",
     1},
    // A sweep leaves its last value in the variable.
    {"series(i, 1, 1, 3, i)",
     "Sentence 1\n"
     "  function series = 6\n"
     "    variable i, not evaluated\n"
     "    number = 1\n"
     "    number = 1\n"
     "    number = 3\n"
     "    variable i = 3\n"},
    {"-(1 / 3)",
     "Sentence 1\n"
     "  function neg = -0.3333333333333333\n"
     "    function divide = 0.3333333333333333\n"
     "      number = 1\n"
     "      number = 3\n"},
    {"equation_root(x, 1, 2, 10, 3)",
     "Sentence 1\n"
     "  function equation_root = ()\n"
     "    variable x, not evaluated\n"
     "    number = 1\n"
     "    number = 2\n"
     "    number = 10\n"
     "    number = 3\n"},
    {"text: T", ""},
    {" ", ""},
};

TEST(Tree, ShowsKindNameAndValueOfEveryNode) {
    for (const auto& [sheet, output, status] : treeRows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(OutputOf({"tree"}, sheet, status), output);
    }
}

TEST(Tree, SpellsNumbersThatAreNotFiniteLikeTheReport) {
    const std::string endless(400, '9');
    EXPECT_EQ(OutputOf({"tree"}, endless + "-" + endless),
              "Sentence 1\n"
              "  function minus = nan\n"
              "    number = inf\n"
              "    number = inf\n");
    EXPECT_TRUE(OutputOf({"tree"}, "-" + endless).find("function neg = -inf\n") !=
                std::string::npos);
}

TEST(Tree, EndsWithTheCompileError) {
    EXPECT_TRUE(OutputOf({"tree"}, "1+;2", 1)
                    .ends_with("C002-10: operator \"+\" is used incorrect in sentence 1.\n"));
    EXPECT_EQ(OutputOf({"tree"}, "\"", 1), "C001-01: string in line 1 is not matched properly.\n");
}

TEST(Tree, ShowsATreeOfAnyDepth) {
    constexpr int depth = 20'000;
    std::string sheet;
    for (int level = 0; level < depth; ++level) sheet += "neg(";
    sheet += "1" + std::string(depth, ')');
    const std::string output = OutputOf({"tree"}, sheet);
    std::size_t functions = 0;
    for (std::size_t at = output.find("function neg"); at != std::string::npos;
         at = output.find("function neg", at + 1)) {
        ++functions;
    }
    EXPECT_EQ(functions, static_cast<std::size_t>(depth));
    EXPECT_TRUE(output.ends_with("number = 1\n"));
    // No line may grow with the depth, or the output would be a hundred times the sheet.
    EXPECT_LT(output.size(), static_cast<std::size_t>(depth) * 200);
}

}  // namespace
}  // namespace orvane
