#include "core/node_builder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "functions/keyword_table.h"
#include "tests/support/sheet_run.h"
#include "tests/support/stage_run.h"

namespace orvane {
namespace {

using test::Compile;
using test::TreeText;

TEST(RemoveDoubledBrackets, LeavesTheOuterPairOfEachNest) {
    struct Row {
        std::string_view text, left;
    };
    constexpr Row rows[] = {
        {"((a))", "( a )"},
        {"((( a )))", "(   a   )"},
        {"( ( a ) )", "(   a   )"},
        {"sin((1))", "sin( 1 )"},
        {"sin(((1)))", "sin(  1  )"},
        {"((a)+(b))", "((a)+(b))"},
        {"(((a)+(b)))", "( (a)+(b) )"},
        {"((a)(b))", "((a)(b))"},
        {"(a)", "(a)"},
        {"((a),b)", "((a),b)"},
        {"f((a),((b)))", "f((a),( b ))"},
        {"f((a,b))", "f( a,b )"},
        {"((f((a))))", "( f( a ) )"},
        {"(f((a)))", "(f( a ))"},
        {"(1,((2)))", "(1,( 2 ))"},
        {"a", "a"},
        {"", ""},
    };
    for (const auto& [text, left] : rows) {
        SCOPED_TRACE(text);
        EditBuffer buffer(text);
        RemoveDoubledBrackets(buffer);
        EXPECT_EQ(buffer.View(), left);
    }
}

// A tree of the given text, built for the last of three sentences. The first one has the value 5
// and the name "five", the second one has the name "none" and no value.
struct BuiltTree {
    SentenceList sentences;
    std::string text, error;

    explicit BuiltTree(std::string_view form) : text(form) {
        for (int i = 0; i < 3; ++i) sentences.Add("");
        sentences[0].name = "five";
        sentences[0].root.result.SetReal(5);
        sentences[0].root.evaluated = true;
        sentences[1].name = "none";
        sentences[2].name = "own";
        sentences.IndexNames();
        BuildNode(Root(), sentences, 2, CalcParameters(), text, error);
    }

    FunctionNode& Root() { return sentences[2].root; }
    std::string Tree() { return TreeText(Root()); }
};

TEST(BuildNode, MakesANodeOfEachKind) {
    struct Row {
        std::string_view text, tree;
    };
    constexpr Row rows[] = {
        {"5", "0 number 5"},
        {"0x1F", "0 number 0x1F"},
        {"x", "0 variable x"},
        {"sin", "0 variable sin"},
        {"own", "0 variable own"},
        {"Five", "0 variable Five"},
        {"five", "0 reference five"},
        {"(1)", "0 brace, 1 number 1"},
        {"(1,2)", "0 brace, 1 number 1, 1 number 2"},
        {"sin(1)", "0 function sin, 1 number 1"},
        {"five(1)", "0 function five, 1 number 1"},
        {"nosuch(x)", "0 function nosuch, 1 variable x"},
        {"plus(2,times(3,x))",
         "0 function plus, 1 number 2, 1 function times, 2 number 3, 2 variable x"},
        {"max((1,2),five,((x)))",
         "0 function max, 1 brace, 2 number 1, 2 number 2, 1 reference five, 1 brace, 2 brace, 3 "
         "variable x"},
        {"f(g(1),h(2))", "0 function f, 1 function g, 2 number 1, 1 function h, 2 number 2"},
        // a list may end behind a comma, and may be empty
        {"max(1,)", "0 function max, 1 number 1"},
        {"max()", "0 function max"},
        {"()", "0 brace"},
        // blanks around the pieces
        {" max ( 1 , x ) ", "0 function max, 1 number 1 , 1 variable x"},
    };
    for (const auto& [text, tree] : rows) {
        SCOPED_TRACE(text);
        BuiltTree built(text);
        EXPECT_EQ(built.error, "");
        EXPECT_EQ(built.Tree(), tree);
    }
}

TEST(BuildNode, GivesEachNodeItsPieceOfTheText) {
    BuiltTree built("plus(2,times(3,x))");
    const FunctionNode& root = built.Root();
    EXPECT_EQ(root.text, "plus(2,times(3,x))");
    ASSERT_EQ(root.children.size(), 2u);
    EXPECT_EQ(root.children[0].text, "2");
    EXPECT_EQ(root.children[1].text, "times(3,x)");
    EXPECT_EQ(root.children[1].children[1].text, "x");
    EXPECT_EQ(root.children[1].children[1].parent, &root.children[1]);
    EXPECT_EQ(root.children[1].parent, &root);
    EXPECT_EQ(root.parent, nullptr);
}

TEST(BuildNode, FindsTheRowsOfWhatCanBeCalled) {
    BuiltTree built("sin(hex(1),nosuch(2),(3),pi(4))");
    const FunctionNode& root = built.Root();
    ASSERT_EQ(root.children.size(), 4u);
    EXPECT_EQ(root.keyword, keywordTable.Find("sin"));
    for (const FunctionNode& child : root.children) EXPECT_EQ(child.keyword, nullptr);
}

TEST(BuildNode, HasTheValuesOfNumbersAndReferencesAtOnce) {
    BuiltTree built("max(1.5,five,x)");
    const auto children = built.Root().children;
    ASSERT_EQ(children.size(), 3u);
    EXPECT_TRUE(children[0].evaluated);
    EXPECT_EQ(children[0].result.At(0, 0), 1.5);
    EXPECT_TRUE(children[1].evaluated);
    EXPECT_EQ(children[1].result.At(0, 0), 5);
    EXPECT_FALSE(children[2].evaluated);
    EXPECT_EQ(children[2].result.RowCount(), 0);
    EXPECT_FALSE(built.Root().evaluated);
}

TEST(BuildNode, CopiesAReferredValueWithItsShape) {
    SentenceList sentences;
    sentences.Add("");
    sentences.Add("");
    sentences[0].name = "c";
    sentences[0].root.result.SetComplex(1, 2);
    sentences[0].root.evaluated = true;
    sentences.IndexNames();
    std::string error;
    BuildNode(sentences[1].root, sentences, 1, CalcParameters(), "c", error);
    EXPECT_EQ(error, "");
    sentences[0].root.result.Clear();
    EXPECT_TRUE(sentences[1].root.result.complexMark);
    EXPECT_EQ(test::RowsOf(sentences[1].root.result), (test::Rows{{1, 2}}));
}

TEST(BuildNode, StopsAtTheFirstFault) {
    struct Row {
        std::string_view text, message;
    };
    constexpr Row rows[] = {
        {"1x", "E002-01 sentence  3: number format error."},
        {"1.2.3", "E002-01 sentence  3: number format error."},
        {"1,2", "E002-01 sentence  3: number format error."},
        {"2(3)", "E002-01 sentence  3: number format error."},
        {"0x", "E002-01 sentence  3: number format error."},
        {"", "E002-01 sentence  3: param format error."},
        {"  ", "E002-01 sentence  3: param format error."},
        {",1", "E002-01 sentence  3: param format error."},
        {")", "E002-01 sentence  3: param format error."},
        {"-1", "E002-01 sentence  3: param format error."},
        {".5", "E002-01 sentence  3: param format error."},
        {"sin(-1)", "E002-01 sentence  3: param format error."},
        {"sin(1", "E002-03 sentence  3: function \"sin\": right brace."},
        {"sin (1", "E002-03 sentence  3: function \"sin\": right brace."},
        {"(1,(2)", "E002-03 sentence  3: function \"\": right brace."},
        {"sin(1)2", "E002-04 sentence  3: function \"sin\": right brace."},
        {"sin(1))", "E002-04 sentence  3: function \"sin\": right brace."},
        {"(1)(2)", "E002-04 sentence  3: function \"\": right brace."},
        {"max((1)2)", "E002-04 sentence  3: function \"\": right brace."},
        {"max(,1)", "E002-04 sentence  3: function \"max\": parameter coma is incorrect."},
        {"max(1,,2)", "E002-04 sentence  3: function \"max\": parameter coma is incorrect."},
        {"max(1, ,2)", "E002-04 sentence  3: function \"max\": parameter coma is incorrect."},
        {"(1,,2)", "E002-04 sentence  3: parameter coma is incorrect."},
        {"none", "sentence 2 was not calculated because it uses formula name \"none\""},
        {"max(1,none,1x)", "sentence 2 was not calculated because it uses formula name \"none\""},
        {"max(1x,none)", "E002-01 sentence  3: number format error."},
        // inner trees are finished before their neighbours are begun
        {"f(g(1x),sin(1)2)", "E002-01 sentence  3: number format error."},
        {"f(g(sin(1)2),1x)", "E002-04 sentence  3: function \"sin\": right brace."},
        // the list of a call is looked at as a whole before its parameters
        {"f(1x)2", "E002-04 sentence  3: function \"f\": right brace."},
        {"f(1x,,2)", "E002-01 sentence  3: number format error."},
    };
    for (const auto& [text, message] : rows) {
        SCOPED_TRACE(text);
        BuiltTree built(text);
        EXPECT_EQ(built.error, message);
        EXPECT_FALSE(built.Root().evaluated);
    }
}

TEST(BuildNode, LooksForNamesInTheSentencesInFrontAlone) {
    struct Row {
        std::string_view sheet, tree;
    };
    constexpr Row rows[] = {
        {"a=1; a", "0 reference a"},
        {"a=a", "0 variable a"},
        {"define: d=a; a=1; d", "0 reference a"},
        {"text: a=1; a", "0 variable a"},
        {"define: a=1; b=2; (a,b)", "0 brace, 1 number 1, 1 reference b"},
        {"hide: a=1; 2*a", "0 function times, 1 number 2, 1 reference a"},
    };
    for (const auto& [sheet, tree] : rows) {
        SCOPED_TRACE(sheet);
        const test::CompiledSheet compiled = Compile(sheet);
        ASSERT_FALSE(compiled.sentences.IsEmpty());
        EXPECT_EQ(TreeText(compiled.sentences[compiled.sentences.Count() - 1].root), tree);
    }
    // A formula that a define brought in ahead of its sentence is not there yet.
    const test::CompiledSheet early = Compile("define: d=f; d; f=3");
    EXPECT_EQ(TreeText(early.sentences[1].root), "0 variable f");
}

TEST(BuildAndEvaluate, RefusesMoreValuesOfFormulasThanCanBeHeld) {
    // A list of 4,096 numbers, and then 4,097 times that list: more than 16 million numbers.
    std::string sheet = "define: n0=1,1";
    const auto twice = [](std::string name, int number) {
        name += std::to_string(number);
        return name + ',' + name;
    };
    for (int i = 1; i < 12; ++i) {
        sheet += ";define: n" + std::to_string(i) + '=' + twice("n", i - 1);
    }
    sheet += ";a=(n11)";
    sheet += ";define: m0=a,a";
    for (int i = 1; i < 12; ++i) {
        sheet += ";define: m" + std::to_string(i) + '=' + twice("m", i - 1);
    }
    sheet += ";max(a,m11);1+1";
    const test::CompiledSheet compiled = Compile(sheet);
    const int last = compiled.sentences.Count() - 1;
    EXPECT_EQ(compiled.sentences[last - 1].error, "E002-05 sentence " + std::to_string(last) +
                                                      ": values of formula names are too large.");
    EXPECT_EQ(compiled.sentences[last].root.result.At(0, 0), 2);
}

TEST(BuildAndEvaluate, BuildsTheTreeOfTheFinishedText) {
    struct Row {
        std::string_view sheet, tree;
    };
    constexpr Row rows[] = {
        {"sin((1))", "0 function sin, 1 number 1"},
        {"(1,2)", "0 brace, 1 number 1, 1 number 2"},
        {"((1))", "0 brace, 1 number 1"},
        {"2 + ( 3 )", "0 function plus, 1 number 2, 1 brace, 2 number 3"},
        {"-x", "0 function neg, 1 variable x"},
        {"true", "0 number 1"},
        {"false", "0 number 0"},
    };
    for (const auto& [sheet, tree] : rows) {
        SCOPED_TRACE(sheet);
        const test::CompiledSheet compiled = Compile(sheet);
        ASSERT_EQ(compiled.sentences.Count(), 1);
        EXPECT_EQ(TreeText(compiled.sentences[0].root), tree);
    }
}

}  // namespace
}  // namespace orvane
