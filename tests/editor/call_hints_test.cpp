#include "editor/call_hints.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane {

void PrintTo(const HintRun& run, std::ostream* out) {
    *out << '"' << run.text << "\" in " << std::hex << run.colour << std::dec;
}

void PrintTo(const OpenCall& call, std::ostream* out) {
    *out << (call.entry == nullptr ? "nothing" : call.entry->name) << " at " << call.column;
}

namespace {

constexpr Colour grey = ColourFrom(128, 128, 128);
constexpr Colour black = ColourFrom(0, 0, 0);
constexpr Colour darkRed = ColourFrom(128, 0, 0);
constexpr Colour green = ColourFrom(0, 128, 0);

const KeywordEntry& Keyword(std::string_view name) { return *keywordTable.Find(name); }

KeywordEntry MadeUpRow(const char* returnText, const char* mainParams, const char* optionalParams) {
    return {"made_up", returnText, KeywordGroup::normal, 1,
            1,         mainParams, optionalParams,       HelpKind::normal};
}

TEST(HintColours, HaveAWarmGround) {
    EXPECT_EQ(hintColours::background, ColourFrom(255, 255, 239));
}

TEST(HintFor, ShowsTheSumWithItsOptionalPart) {
    const CallHint hint = HintFor(Keyword("sum"));
    EXPECT_EQ(hint.prefix, "float ");
    EXPECT_EQ(hint.name, "sum");
    EXPECT_EQ(hint.parameterRows, std::vector<std::string>{"float"});
    EXPECT_EQ(hint.optionalRows, std::vector<std::string>{" ,float ,..."});
    EXPECT_EQ(hint.HeadRuns(), (std::vector<HintRun>{{"float ", grey}, {"sum", black}}));
    EXPECT_EQ(hint.RowRuns(0), (std::vector<HintRun>{{" ( ", black},
                                                     {"float", darkRed},
                                                     {" ", black},
                                                     {",", black},
                                                     {"float", green},
                                                     {" ", black},
                                                     {",", black},
                                                     {"...", green},
                                                     {" )", black}}));
}

TEST(HintFor, ColoursTheTypeOfEachParameterAndNotItsRole) {
    EXPECT_EQ(HintFor(Keyword("reminder")).RowRuns(0), (std::vector<HintRun>{{" ( ", black},
                                                                             {"float", darkRed},
                                                                             {" ", black},
                                                                             {",", black},
                                                                             {"float", darkRed},
                                                                             {" base", black},
                                                                             {" )", black}}));
}

TEST(HintFor, GivesEachFormARow) {
    const CallHint hint = HintFor(Keyword("if"));
    EXPECT_EQ(hint.prefix, "formula ");
    EXPECT_EQ(hint.parameterRows,
              (std::vector<std::string>{"int condition", "int condition ,select positive",
                                        "select none-zero ,select zero",
                                        "select zero ,select negative"}));
    EXPECT_EQ(hint.optionalRows, std::vector<std::string>(4));
    const CallHint length = HintFor(Keyword("length"));
    EXPECT_EQ(length.parameterRows, (std::vector<std::string>{"float", "point"}));
    EXPECT_EQ(length.optionalRows, (std::vector<std::string>{" ,float ,...", ""}));
    EXPECT_EQ(length.RowRuns(1),
              (std::vector<HintRun>{{" ( ", black}, {"point", darkRed}, {" )", black}}));
}

TEST(HintFor, ShowsTheOddReturnTextOfCurves) {
    EXPECT_EQ(HintFor(Keyword("locus_xy")).prefix, "1 ");
}

TEST(HintFor, HasNoPrefixWithoutAReturnText) {
    const CallHint hint = HintFor(MadeUpRow(nullptr, "float", nullptr));
    EXPECT_EQ(hint.prefix, "");
    EXPECT_EQ(hint.HeadRuns(), (std::vector<HintRun>{{"made_up", black}}));
}

TEST(HintFor, HasNoRowsWithoutParameters) {
    EXPECT_TRUE(HintFor(MadeUpRow("float", nullptr, "float")).parameterRows.empty());
}

TEST(HintFor, ShowsAnEmptyFormAsBracketsAlone) {
    const CallHint hint = HintFor(MadeUpRow("float", "float/", nullptr));
    ASSERT_EQ(hint.parameterRows.size(), 2u);
    EXPECT_EQ(hint.RowRuns(1), (std::vector<HintRun>{{" ( ", black}, {" )", black}}));
}

using ColouredText = std::vector<std::pair<char, Colour>>;

ColouredText Characters(const std::vector<HintRun>& runs) {
    ColouredText text;
    for (const HintRun& run : runs) {
        EXPECT_FALSE(run.text.empty());
        for (const char c : run.text) text.emplace_back(c, run.colour);
    }
    return text;
}

void AddPlain(std::string_view plain, ColouredText& text) {
    for (const char c : plain) text.emplace_back(c, black);
}

// One form read straight from the row's text, character by character. An optional form is led in
// by a comma.
void AddForm(std::string_view form, bool isOptional, ColouredText& text) {
    if (isOptional) AddPlain(" ,", text);
    bool isType = true;
    for (const char c : form) {
        if (c == ',') {
            AddPlain(" ,", text);
            isType = true;
        } else {
            isType = isType && c != ' ';
            text.emplace_back(c, !isType ? black : isOptional ? green : darkRed);
        }
    }
}

// The texts between the slashes; none of nothing.
std::vector<std::string> Forms(const char* params) {
    std::vector<std::string> forms;
    if (params == nullptr) return forms;
    forms.emplace_back();
    for (const char* at = params; *at != '\0'; ++at) {
        if (*at == '/') {
            forms.emplace_back();
        } else {
            forms.back() += *at;
        }
    }
    return forms;
}

TEST(HintFor, ReadsEveryKeywordAsItsTextsTell) {
    int rowCount = 0;
    for (const KeywordEntry& entry : keywordRows) {
        SCOPED_TRACE(entry.name);
        const CallHint hint = HintFor(entry);
        EXPECT_EQ(hint.name, entry.name);
        EXPECT_EQ(hint.prefix,
                  entry.returnText == nullptr ? "" : std::string(entry.returnText) + ' ');
        const std::vector<std::string> mainForms = Forms(entry.mainParams);
        const std::vector<std::string> optionalForms = Forms(entry.optionalParams);
        ASSERT_EQ(hint.parameterRows.size(), mainForms.size());
        ASSERT_EQ(hint.optionalRows.size(), mainForms.size());
        for (std::size_t row = 0; row < mainForms.size(); ++row) {
            ColouredText expected;
            AddPlain(" ( ", expected);
            AddForm(mainForms[row], false, expected);
            if (row < optionalForms.size()) AddForm(optionalForms[row], true, expected);
            AddPlain(" )", expected);
            EXPECT_EQ(Characters(hint.RowRuns(row)), expected);
            ++rowCount;
        }
    }
    EXPECT_EQ(rowCount, 150);
}

struct OpenedRow {
    const char* line;
    std::int32_t caretCol;
    const char* name;  // or null
    std::int32_t column;
};

constexpr OpenedRow openedRows[] = {
    {"sin(", 4, "sin", 0},
    {"sin  (", 6, "sin", 0},
    {"sin\t(", 5, "sin", 0},
    {"sin \t (", 7, "sin", 0},
    {"a=sin(", 6, "sin", 2},
    {"2*bit_and(", 10, "bit_and", 2},
    {"sin(1)+cos(2)", 11, "cos", 7},
    {"sin(cos(", 8, "cos", 4},
    {"ln(1", 3, "ln", 0},
    {"\"a\"sin(", 7, "sin", 3},
    {"complex(", 8, "complex", 0},
    {"if(", 3, "if", 0},
    {"sin(", 3, nullptr, 0},  // no bracket ahead of the caret
    {"sin(1", 5, nullptr, 0},
    {"(", 1, nullptr, 0},  // too near to the line's start
    {"((", 2, nullptr, 0},
    {" (", 2, nullptr, 0},
    {"\t\t(", 3, nullptr, 0},
    {"sin((", 5, nullptr, 0},  // a bracket without a name
    {"1+(", 3, nullptr, 0},
    {"2sin(", 5, nullptr, 0},  // the word starts with the digit
    {"2(", 2, nullptr, 0},
    {"pi(", 3, nullptr, 0},  // a constant
    {"e(", 2, nullptr, 0},
    {"hex(", 4, nullptr, 0},  // headers
    {"text(", 5, nullptr, 0},
    {"Sin(", 4, nullptr, 0},
    {"price(", 6, nullptr, 0},
    {"sin.(", 5, nullptr, 0},
    {"", 0, nullptr, 0},
    {"", 2, nullptr, 0},  // not in the line
    {"sin(", 99, nullptr, 0},
    {"sin(", -1, nullptr, 0},
};

TEST(CallOpenedAt, FindsTheFunctionAheadOfTheBracket) {
    for (const auto& [line, caretCol, name, column] : openedRows) {
        SCOPED_TRACE(testing::Message() << line << " at " << caretCol);
        const std::optional<OpenCall> call = CallOpenedAt(line, caretCol);
        ASSERT_EQ(call.has_value(), name != nullptr);
        if (name != nullptr) {
            EXPECT_EQ(*call, (OpenCall{column, &Keyword(name)}));
        }
    }
}

// Types as the text view does, with the hint's rules and nothing else of it.
struct Typist {
    std::string line;
    std::int32_t caret = 0;
    std::int32_t caretLine = 0;
    CallStack stack;
    std::string shown;  // the function of the hint; empty while it is hidden

    void Type(std::string_view text) {
        for (const char c : text) {
            line.insert(static_cast<std::size_t>(caret++), 1, c);
            if (c == '(') OpenCallAtCaret();
            Update();
        }
    }
    void MoveTo(std::int32_t col) {
        caret = col;
        Update();
    }
    void OpenCallAtCaret() {
        const std::optional<OpenCall> call = CallOpenedAt(line, caret);
        if (!call) return;
        stack.Push(*call, caretLine);
        shown = call->entry->name;
    }
    void Update() {
        if (shown.empty()) return;
        switch (stack.Update(line, caretLine, caret)) {
            case HintChange::stays:
                break;
            case HintChange::hides:
                shown.clear();
                break;
            case HintChange::showsNewest:
                shown = stack.calls.back().entry->name;
                break;
        }
    }
};

struct TypedRow {
    const char* text;
    const char* shown;
};

constexpr TypedRow typedRows[] = {
    {"sin", ""},
    {"sin(", "sin"},
    {"sin(1", "sin"},
    {"sin(1)", ""},
    {"sin()", ""},
    {"sin(1))", ""},
    {"sin((1)", "sin"},
    {"sin((1))", ""},
    {"sin(cos(", "cos"},
    {"sin(cos(1)", "sin"},
    {"sin(cos(1))", ""},
    {"sin(cos(1)+tan(", "tan"},
    {"sin(cos(1)+tan(2)", "sin"},
    {"max(1,min(2,3),sum(", "sum"},
    {"max(1,min(2,3),sum(4),", "max"},
    {"sin(price(", "sin"},  // a bracket that is no known call
    {"sin(price(1)", "sin"},
    {"sin(pi(", "sin"},
    {"sin(1)+cos(", "cos"},
    {"sin  (", "sin"},
    {"pi(", ""},
    {"hex(", ""},
    // Strings do not count.
    {"strlen(\"(", "strlen"},
    {"strlen(\"(\"", "strlen"},
    {"strlen(\"(\")", ""},
    {"strlen(\")\"", "strlen"},
    {"strlen(\")", "strlen"},  // one that is not closed ends what is read
    {"strlen(\")\")", ""},
    {"strlen(\"//\")", ""},
    {"strlen(\"a\"\"b\")", ""},
    // Nor do comments.
    {"sin(1//)", "sin"},
    {"sin(1 // ) )", "sin"},
    {"sin(1//\")", "sin"},
    {"sin(1/2)", ""},
    {"sin(1/ /2)", ""},
};

TEST(CallStack, FollowsWhatIsTyped) {
    for (const auto& [text, shown] : typedRows) {
        SCOPED_TRACE(text);
        Typist typist;
        typist.Type(text);
        EXPECT_EQ(typist.shown, shown);
        EXPECT_EQ(typist.stack.calls.empty(), typist.shown.empty());
    }
}

struct MovedRow {
    const char* text;
    std::int32_t caret;
    const char* shown;
};

constexpr MovedRow movedRows[] = {
    {"sin(", 3, ""},  // ahead of the bracket
    {"sin(", 1, ""},  // in the name
    {"sin(", 0, ""},
    {"sin(12", 5, "sin"},
    {"sin(12", 4, "sin"},
    {"a+sin(12", 2, ""},  // at the name's start
    {"sin(cos(1", 8, "cos"},
    {"sin(cos(1", 7, "sin"},
    {"sin(cos(1", 5, "sin"},
    {"sin(cos(1", 4, "sin"},  // at the inner name's start
    {"sin(cos(1", 3, ""},
    {"sin(cos(tan(1", 5, "sin"},  // two calls left at once
    {"sin(cos(tan(1", 9, "cos"},
};

TEST(CallStack, DropsTheCallsThatTheCaretLeaves) {
    for (const auto& [text, caret, shown] : movedRows) {
        SCOPED_TRACE(testing::Message() << text << " to " << caret);
        Typist typist;
        typist.Type(text);
        typist.MoveTo(caret);
        EXPECT_EQ(typist.shown, shown);
    }
}

TEST(CallStack, DoesNotTakeACallUpAgain) {
    Typist typist;
    typist.Type("sin(cos(1");
    typist.MoveTo(4);
    typist.MoveTo(9);
    EXPECT_EQ(typist.shown, "sin");
    typist.MoveTo(0);
    typist.MoveTo(9);
    EXPECT_EQ(typist.shown, "");
}

TEST(CallStack, EndsOnAnotherLine) {
    Typist typist;
    typist.Type("sin(cos(");
    typist.caretLine = 1;
    typist.Update();
    EXPECT_EQ(typist.shown, "");
    EXPECT_TRUE(typist.stack.calls.empty());
}

TEST(CallStack, StartsAnewWithACallOnAnotherLine) {
    CallStack stack;
    stack.Push({0, &Keyword("sin")}, 3);
    stack.Push({4, &Keyword("cos")}, 3);
    EXPECT_EQ(stack.line, 3);
    EXPECT_EQ(stack.calls.size(), 2u);
    stack.Push({9, &Keyword("tan")}, 4);
    EXPECT_EQ(stack.line, 4);
    EXPECT_EQ(stack.calls, (std::vector<OpenCall>{{9, &Keyword("tan")}}));
}

TEST(CallStack, AsksOnlyUpToTheFirstOpenCall) {
    CallStack stack;
    stack.Push({0, &Keyword("sin")}, 0);
    stack.Push({6, &Keyword("cos")}, 0);
    EXPECT_EQ(stack.Update("sin()+cos(", 0, 10), HintChange::stays);
    EXPECT_EQ(stack.calls.size(), 2u);
    EXPECT_EQ(stack.Update("sin()+cos()", 0, 11), HintChange::hides);
    EXPECT_TRUE(stack.calls.empty());
}

TEST(CallStack, DropsSeveralClosedCallsAtOnce) {
    CallStack stack;
    stack.Push({0, &Keyword("sin")}, 0);
    stack.Push({4, &Keyword("cos")}, 0);
    stack.Push({8, &Keyword("tan")}, 0);
    EXPECT_EQ(stack.Update("sin(cos(tan())", 0, 14), HintChange::showsNewest);
    EXPECT_EQ(stack.calls, (std::vector<OpenCall>{{0, &Keyword("sin")}}));
}

TEST(CallStack, LooksOnlyAheadOfTheCaret) {
    CallStack stack;
    stack.Push({0, &Keyword("sin")}, 0);
    EXPECT_EQ(stack.Update("sin(1)", 0, 5), HintChange::stays);
    EXPECT_EQ(stack.Update("sin(\"))\"", 0, 6), HintChange::stays);
    EXPECT_EQ(stack.Update("sin(1)", 0, 6), HintChange::hides);
}

TEST(CallStack, HidesTheHintWhereNothingIsOpen) {
    CallStack stack;
    stack.line = 0;
    EXPECT_EQ(stack.Update("sin(", 0, 4), HintChange::hides);
}

TEST(CallStack, OutlivesALineThatGotShorter) {
    CallStack stack;
    stack.Push({6, &Keyword("sin")}, 0);
    EXPECT_EQ(stack.Update("ab", 0, 12), HintChange::hides);
    EXPECT_TRUE(stack.calls.empty());
}

// Whether a call is open, read from its name to the caret in the plainest way.
bool IsOpenByPlainReading(std::string_view line, std::size_t column, std::size_t caret) {
    int opened = 0;
    int closed = 0;
    for (std::size_t at = column; at < caret; ++at) {
        if (line[at] == '(') ++opened;
        if (line[at] == ')') ++closed;
        if (line[at] == '/' && at + 1 < caret && line[at + 1] == '/') break;
        if (line[at] != '"') continue;
        do {
            ++at;
        } while (at < caret && line[at] != '"');
    }
    return closed < opened;
}

TEST(CallStack, KeepsWhatAPlainReadingKeeps) {
    constexpr std::string_view signs = "a a((()))\"\"//1";
    std::mt19937 random(7);
    const auto pick = [&random](std::size_t below) { return random() % below; };
    int kept = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string line;
        for (std::size_t length = 1 + pick(24); length > 0; --length) {
            line += signs[pick(signs.size())];
        }
        SCOPED_TRACE(line);
        const std::size_t caret = 1 + pick(line.size());
        CallStack stack;
        for (std::size_t column = 0; column < line.size(); ++column) {
            if (pick(3) == 0) stack.Push({static_cast<std::int32_t>(column), &Keyword("sin")}, 0);
        }
        std::vector<OpenCall> expected = stack.calls;
        const auto isLeft = [&](const OpenCall& call) {
            const auto column = static_cast<std::size_t>(call.column);
            return column >= caret || !IsOpenByPlainReading(line, column, caret);
        };
        while (!expected.empty() && isLeft(expected.back())) expected.pop_back();
        stack.Update(line, 0, static_cast<std::int32_t>(caret));
        ASSERT_EQ(stack.calls, expected);
        kept += !expected.empty();
    }
    EXPECT_GT(kept, 2000);
}

// Reading the line anew for each call would take hours here.
TEST(CallStack, ReadsALongLineOnceForAllItsCalls) {
    constexpr std::int32_t calls = 250000;
    CallStack stack;
    std::string line;
    for (std::int32_t call = 0; call < calls; ++call) {
        stack.Push({4 * call, &Keyword("sin")}, 0);
        line += "sin(";
    }
    line.append(calls - 1, ')');
    const auto end = static_cast<std::int32_t>(line.size());
    EXPECT_EQ(stack.Update(line, 0, end), HintChange::showsNewest);
    EXPECT_EQ(stack.calls, (std::vector<OpenCall>{{0, &Keyword("sin")}}));
    EXPECT_EQ(stack.Update(line + ')', 0, end + 1), HintChange::hides);
}

}  // namespace
}  // namespace orvane
