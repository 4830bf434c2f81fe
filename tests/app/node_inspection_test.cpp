#include "app/node_inspection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editor/editor_model.h"
#include "locus/locus_store.h"
#include "windows/node_drawing.h"

namespace orvane {
namespace {

class CountedProgress : public ProgressDisplay {
public:
    void Show() override { ++shown; }
    void Step() override { ++steps; }
    void Hide() override { ++hidden; }

    int shown = 0, steps = 0, hidden = 0;
};

InspectedSentence Inspect(std::string_view sheet, std::size_t place,
                          const CalcParameters& parameters = {}) {
    CountedProgress progress;
    return InspectSentence(sheet, place, parameters, progress);
}

constexpr int none = -1;

struct SentenceRow {
    const char* sheet;
    // The index of the sentence at each place, from ahead of the first character to the end.
    std::vector<int> indices;
};
const SentenceRow sentenceRows[] = {
    {"", {none}},
    {"1", {0, 0}},
    {"1;", {0, 0, 0}},
    {"1; ", {0, 0, 0, none}},
    {"1;\n2;", {0, 0, 0, 1, 1, 1}},
    {"1;2", {0, 0, 1, 1}},  // two that touch: the second one
    {"1 2", {0, 0, 0, 0}},
    {";1;", {0, 0, 0, 0}},
    {"1;;2", {0, 0, 0, 1, 1}},
    {"1; ;2", {0, 0, 0, 1, 1, 1}},  // a blank sentence belongs to the next one
    {"1;\n\n", {0, 0, 0, none, none}},
    {"1\n\n", {0, 0, 0, 0}},
    {"\n1", {0, 0, 0}},
    {"1;//2;\n3", {0, 0, 0, 1, 1, 1, 1, 1, 1}},  // a comment is white space
    {"\";\";2", {0, 0, 0, 0, 1, 1}},             // a string hides its semicolon
    {"1;\"2;3", {0, 0, 1, 1, 1, 1, 1}},          // an open one hides all behind it
    {"//1;", {none, none, none, none, none}},
    {" ; ", {none, none, none, none}},
};

TEST(SentenceAt, ReachesFromSemicolonToSemicolon) {
    for (const SentenceRow& row : sentenceRows) {
        SCOPED_TRACE(row.sheet);
        ASSERT_EQ(row.indices.size(), std::string_view(row.sheet).size() + 1);
        for (std::size_t place = 0; place < row.indices.size(); ++place) {
            SCOPED_TRACE(place);
            EXPECT_EQ(SentenceAt(row.sheet, place).value_or(none), row.indices[place]);
        }
        EXPECT_EQ(SentenceAt(row.sheet, row.indices.size() + 1), std::nullopt);
    }
}

TEST(SentenceAt, EndsAtANul) {
    const std::string_view sheet("1;\n2\0003;", 7);
    EXPECT_EQ(SentenceAt(sheet, 4), 1);
    EXPECT_EQ(SentenceAt(sheet, 5), std::nullopt);
}

TEST(CaretOffset, CountsALineFeedBehindEachLine) {
    EditorModel editor;
    editor.SetText("ab\n\ncde\n");
    const std::string text = editor.GetText();
    struct Row {
        TextPosition caret;
        std::size_t offset;
    };
    constexpr Row rows[] = {{{0, 0}, 0}, {{0, 2}, 2}, {{1, 0}, 3},
                            {{2, 0}, 4}, {{2, 3}, 7}, {{3, 0}, 8}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.offset);
        editor.PlaceCaret(row.caret, false);
        EXPECT_EQ(CaretOffset(editor), row.offset);
    }
    EXPECT_EQ(text.size(), 8U);
}

// The first lines of the boxes, each behind as many blanks as the node is deep.
std::vector<std::string> BoxesOf(FunctionNode& root) {
    std::vector<std::string> boxes;
    for (const FunctionNode* node = &root; node != nullptr;) {
        std::string line;
        for (const FunctionNode* up = node; up != &root; up = up->parent) line += ' ';
        const std::string text = NodeText(*node);
        boxes.push_back(line + text.substr(0, text.find('\n')));
        node = NextInTree(&root, const_cast<FunctionNode*>(node));
    }
    return boxes;
}

TEST(InspectSentence, KeepsTheTreeAtThePlace) {
    const std::string sheet = "a = 3;\nb = 1 + 2 * a;\nc = 7;";
    InspectedSentence found = Inspect(sheet, sheet.find('2'));
    ASSERT_NE(found.root, nullptr) << found.message;
    EXPECT_EQ(found.message, "");
    EXPECT_EQ(
        BoxesOf(*found.root),
        (std::vector<std::string>{"function: plus - yes", " type: number - yes",
                                  " function: times - yes", "  type: number - yes", "   - yes"}));
    EXPECT_EQ(found.root->result.ToText(1), "7.0\n");
    ASSERT_EQ(found.sentences.Count(), 3);
    EXPECT_EQ(found.root, &found.sentences[1].root);
    // The others have given up theirs.
    EXPECT_TRUE(found.sentences[0].root.children.empty());
    EXPECT_TRUE(found.sentences[2].root.children.empty());
}

TEST(InspectSentence, KeepsTheTreeOfASeries) {
    const std::string sheet = "series(x, 1, 1, 4, 2 * x);";
    InspectedSentence found = Inspect(sheet, 0);
    ASSERT_NE(found.root, nullptr) << found.message;
    EXPECT_EQ(found.root->result.ToText(1), "20.0\n");
    const std::vector<std::string> boxes = BoxesOf(*found.root);
    EXPECT_EQ(boxes.front(), "function: series - yes");
    EXPECT_NE(std::find(boxes.begin(), boxes.end(), "  variable: x - yes"), boxes.end());
}

TEST(InspectSentence, KeepsTheTreeOfASentenceThatFails) {
    const std::string sheet = "1 + sqrt(0 - 1);";
    InspectedSentence found = Inspect(sheet, 3);
    ASSERT_NE(found.root, nullptr) << found.message;
    EXPECT_EQ(found.message, "");
    EXPECT_NE(found.sentences[0].error, "");
    const std::vector<std::string> boxes = BoxesOf(*found.root);
    EXPECT_EQ(boxes.front(), "function: plus - not");
    EXPECT_EQ(boxes[1], " type: number - yes");
    EXPECT_EQ(boxes[2], " function: sqrt - not");
}

struct MessageRow {
    const char* sheet;
    std::size_t place;
    std::string message;
};
const MessageRow messageRows[] = {
    {"", 0, "Please input formulas for calculation."},
    {"1;\n\n", 4, "There is no sentence at the caret."},
    {"1;", 9, "There is no sentence at the caret."},
    {"// 1;", 2, "There is no sentence at the caret."},
    {"1;\ntext: \"a\";\n2;", 8, "Sentence 2 is a text. Only formulas have nodes."},
    {"define: a = 1;\na;", 3, "Sentence 1 is a define. Only formulas have nodes."},
    {"1;\na = 2 +;", 0,
     "There are no nodes, since the sheet has an error.\n\n"
     "C002-10: operator \"+\" is used incorrect in sentence 2."},
};

TEST(InspectSentence, TellsWhyThereIsNoTree) {
    for (const MessageRow& row : messageRows) {
        SCOPED_TRACE(row.sheet);
        const InspectedSentence found = Inspect(row.sheet, row.place);
        EXPECT_EQ(found.root, nullptr);
        EXPECT_EQ(found.message, row.message);
    }
}

TEST(InspectSentence, RefusesASheetThatIsTooLarge) {
    std::string sheet(largestSheet + 1, ' ');
    sheet[0] = '1';
    for (const std::size_t place : {std::size_t{0}, sheet.size(), sheet.size() + 1}) {
        const InspectedSentence found = Inspect(sheet, place);
        EXPECT_EQ(found.root, nullptr);
        EXPECT_EQ(found.message, largeSheetMessage);
    }
    // A NUL ends the sheet, wherever the caret stands.
    sheet[1] = '\0';
    EXPECT_NE(Inspect(sheet, 0).root, nullptr);
    EXPECT_EQ(Inspect(sheet, 5).message, "There is no sentence at the caret.");
    sheet[0] = '\0';
    EXPECT_EQ(Inspect(sheet, 0).message, emptySheetMessage);
}

TEST(InspectSentence, LeavesTheCurvesOfTheLastRunAlone) {
    locusStore.Clear();
    locusStore.screenWidth = 800;
    locusStore.screenHeight = 600;
    LocusSet* const set = locusStore.Add(5, LocusKind::polar);
    ASSERT_TRUE(set->AddPoint(1.5, 2.5, true));
    for (const char* sheet : {"1;", "locus_xy(x, 0, 10, 50, x * x);", "1 +;", "text: a;", ""}) {
        SCOPED_TRACE(sheet);
        Inspect(sheet, 0);
        ASSERT_EQ(locusStore.Count(), 1);
        EXPECT_EQ(&locusStore[0], set);
        EXPECT_EQ(set->sentenceIndex, 5);
        ASSERT_EQ(set->points.size(), 1U);
        EXPECT_EQ(set->points[0].y, 2.5);
        EXPECT_EQ(locusStore.screenWidth, 800);
        EXPECT_EQ(locusStore.screenHeight, 600);
    }
    locusStore = LocusStore();
}

TEST(InspectSentence, CalculatesWithACopyOfTheOptions) {
    calcParameters = CalcParameters();
    struct Row {
        std::int32_t systemBitsIndex;
        const char* value;
    };
    // No bits stand for those of the system, which must be 2 to 53.
    for (const Row& row : {Row{6, "255.0\n"}, Row{14, "65535.0\n"}, Row{-9, "3.0\n"}}) {
        SCOPED_TRACE(row.systemBitsIndex);
        CalcParameters parameters;
        parameters.systemBitsIndex = row.systemBitsIndex;
        const InspectedSentence found = Inspect("bit_not(0, 0);", 0, parameters);
        ASSERT_NE(found.root, nullptr) << found.message;
        EXPECT_EQ(found.root->result.ToText(1), row.value);
        EXPECT_EQ(calcParameters.systemBitsIndex, CalcParameters().systemBitsIndex);
        EXPECT_EQ(calcParameters.wordModulus, CalcParameters().wordModulus);
        EXPECT_EQ(calcParameters.progress, nullptr);
    }
}

TEST(InspectSentence, ShowsTheProgressOfALongRun) {
    CountedProgress progress;
    InspectSentence("series(x, 0, 1, 5000, x);", 0, {}, progress);
    EXPECT_EQ(progress.shown, 1);
    EXPECT_GT(progress.steps, 5);
    EXPECT_EQ(progress.hidden, 1);
}

TEST(InspectSentence, TakesDeepFormulas) {
    std::string sheet = "1";
    for (int term = 0; term < 20'000; ++term) sheet += "+1";
    InspectedSentence found = Inspect(sheet, 40'000);
    ASSERT_NE(found.root, nullptr) << found.message;
    EXPECT_EQ(found.root->result.ToText(1), "20001.0\n");
}

}  // namespace
}  // namespace orvane
