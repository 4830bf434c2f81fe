#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/compile_stages.h"
#include "core/node_builder.h"
#include "core/substitution.h"
#include "tests/support/literal_passes.h"
#include "tests/support/stage_run.h"

// The passes against their plain restatements, on many texts that nobody wrote. The passes do in
// one walk what the restatements do by starting again after every replacement.

namespace orvane {
namespace {

using test::RunStage;
using test::StagedText;

// The same numbers on every machine.
class Random {
public:
    explicit Random(std::uint64_t seed) : state(seed) {}

    int Below(int bound) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return static_cast<int>((state >> 33) % static_cast<std::uint64_t>(bound));
    }

    bool OneIn(int count) { return Below(count) == 0; }

    template <std::size_t count>
    std::string_view Pick(const std::string_view (&words)[count]) {
        return words[Below(count)];
    }

private:
    std::uint64_t state;
};

// Drops the brackets that have no partner.
std::string Balanced(std::string_view text) {
    std::string opened;
    int depth = 0;
    for (const char c : text) {
        if (c == ')' && depth == 0) continue;
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        opened += c;
    }
    while (depth-- > 0) opened += ')';
    return opened;
}

std::string RandomText(Random& random, std::string_view alphabet, int longest) {
    std::string text;
    const int length = 1 + random.Below(longest);
    for (int i = 0; i < length; ++i) {
        text += alphabet[static_cast<std::size_t>(random.Below(static_cast<int>(alphabet.size())))];
    }
    return text;
}

// An expression of the language, with blanks here and there and now and then a small fault.
class ExpressionMaker {
public:
    explicit ExpressionMaker(Random& random) : random(random) {}

    std::string Make(int depth) {
        std::string text = Operand(depth);
        for (int rest = random.Below(4); rest > 0; --rest) {
            constexpr std::string_view operators[] = {
                "+", "-", "*", "/", "%", "^",  "<<", ">>", ">=", "<=", "==", "<>",
                ">", "<", "+", "-", "*", "+-", "*-", "--", "<-", "^+", "=",  "!="};
            text.append(Blank()).append(random.Pick(operators)).append(Blank());
            text += Operand(depth);
        }
        return text;
    }

private:
    std::string_view Blank() { return random.OneIn(4) ? " " : ""; }

    std::string Operand(int depth) {
        std::string text;
        if (random.OneIn(6)) text += random.OneIn(2) ? "-" : "+ ";
        text += Core(depth);
        while (random.OneIn(6)) text.append(Blank()) += '!';
        return text;
    }

    std::string Core(int depth) {
        constexpr std::string_view leaves[] = {"1", "2.5", "x", "ab", "0x1F", "pi", "10", "y_1"};
        switch (depth == 0 ? 0 : random.Below(7)) {
            case 1:
            case 2:
                return '(' + Make(depth - 1) + ')';
            case 3:
                return "sin" + std::string(Blank()) + '(' + Make(depth - 1) + ')';
            case 4:
                return "max(" + Make(depth - 1) + ',' + std::string(Blank()) + Make(depth - 1) +
                       ')';
            case 5:
                return '|' + Make(depth - 1) + '|';
            default:
                return random.OneIn(200) ? "" : std::string(random.Pick(leaves));
        }
    }

    Random& random;
};

// How far a text came, so that a test can see that it has not only compared refusals.
struct Tally {
    int texts = 0;
    int rewritten = 0;    // passed stages 3 and 4 and changed on the way
    int refused[4] = {};  // by stage 3, 4 and 5
};

// Takes a text through stages 3, 4 and 5 in both ways. False when they differ.
bool CompareStages(const std::string& formula, Tally& tally) {
    ++tally.texts;
    StagedText plain{formula, test::CheckNumbersPlainly(formula, 1)};
    if (plain.error.empty()) test::CollapseSignsPlainly(plain.text);
    StagedText staged = RunStage(CheckNumbersAndPoints, formula);
    EXPECT_EQ(staged, plain) << formula;
    if (!plain.error.empty()) ++tally.refused[0];
    if (staged != plain || !plain.error.empty()) return staged == plain;

    const std::string collapsed = plain.text;
    plain.error = test::RewriteOperatorsPlainly(plain.text, 1);
    staged = RunStage(RewriteOperators, collapsed);
    EXPECT_EQ(staged.error, plain.error) << formula;
    if (staged.error != plain.error) return false;
    if (!plain.error.empty()) ++tally.refused[1];
    // A failed pass leaves its text as it happens to stand, and nobody reads it.
    if (!plain.error.empty()) return true;
    EXPECT_EQ(staged.text, plain.text) << formula;
    if (staged.text != plain.text) return false;
    if (plain.text != collapsed) ++tally.rewritten;

    plain.error = test::CheckSymbolsPlainly(plain.text, 1);
    staged = RunStage(CheckSymbols, plain.text);
    EXPECT_EQ(staged, plain) << formula;
    if (!plain.error.empty()) ++tally.refused[2];
    if (staged != plain || !plain.error.empty()) return staged == plain;

    EditBuffer buffer(plain.text);
    RemoveDoubledBrackets(buffer);
    test::RemoveDoubledBracketsPlainly(plain.text);
    EXPECT_EQ(buffer.View(), plain.text) << formula;
    return buffer.View() == plain.text;
}

TEST(Passes, MakeTheSameOfRandomTextsAsTheirPlainForms) {
    constexpr std::string_view alphabets[] = {
        "ab1.+-*/%^!|<>=(), ", "a1+-*^!()",    "1+-*<>=()",  "a|1|!()+ ",
        "ab1+- (())",          "a12.5+-*/(),", "a1+*()!!||", "x-+ ()",
    };
    Tally tally;
    Random random(20240229);
    for (int i = 0; i < 60'000 && tally.refused[3] == 0; ++i) {
        const std::string text = Balanced(RandomText(random, random.Pick(alphabets), 14));
        if (!CompareStages(text, tally)) ++tally.refused[3];
    }
    EXPECT_GT(tally.rewritten, 5000);
    EXPECT_GT(tally.refused[0], 5000);
    EXPECT_GT(tally.refused[1], 5000);
    EXPECT_GT(tally.refused[2], 1000);
}

TEST(Passes, MakeTheSameOfExpressionsAsTheirPlainForms) {
    Tally tally;
    Random random(7);
    ExpressionMaker maker(random);
    for (int i = 0; i < 15'000 && tally.refused[3] == 0; ++i) {
        if (!CompareStages(maker.Make(random.Below(4)), tally)) ++tally.refused[3];
    }
    EXPECT_GT(tally.rewritten, 5000);
}

TEST(CollapsedSigns, AreThoseOfThePlainForm) {
    Random random(11);
    for (int i = 0; i < 5'000; ++i) {
        const std::string text = RandomText(random, "+- (,", 16);
        std::string plain = text;
        test::CollapseSignsPlainly(plain);
        ASSERT_EQ(RunStage(CheckNumbersAndPoints, text), (StagedText{plain, ""})) << text;
    }
}

TEST(DoubledBrackets, AreThoseOfThePlainForm) {
    Random random(13);
    int changed = 0;
    for (int i = 0; i < 10'000; ++i) {
        const std::string text = Balanced(RandomText(random, "((()))) a,", 20));
        std::string plain = text;
        test::RemoveDoubledBracketsPlainly(plain);
        EditBuffer buffer(text);
        RemoveDoubledBrackets(buffer);
        ASSERT_EQ(buffer.View(), plain) << text;
        if (plain != text) ++changed;
    }
    EXPECT_GT(changed, 2000);
}

constexpr std::string_view defineNames[] = {"a", "b", "c", "dd"};

// Words, numbers and closed strings, with the names of the first `defines` defines among them.
std::string RandomWords(Random& random, int longest, int defines) {
    constexpr std::string_view pieces[] = {"x", "+",       ".",   " ", "1",   "2",  "\"a\"", "e1",
                                           "(", "\"b c\"", "0x1", ",", "1.5", "a1", "\"\"",  ")"};
    std::string text;
    for (int rest = random.Below(longest); rest > 0; --rest) {
        const bool name = defines > 0 && random.OneIn(3);
        text += name ? defineNames[random.Below(defines)] : random.Pick(pieces);
    }
    return text;
}

TEST(Defines, AreSubstitutedAsInThePlainForm) {
    constexpr int count = 4;
    Random random(17);
    int replaced = 0;
    for (int i = 0; i < 10'000; ++i) {
        SentenceList sentences;
        std::vector<test::PlainDefine> defines;
        for (int at = 0; at < count; ++at) {
            std::string body = RandomWords(random, 5, at);
            sentences.Add(body);
            sentences[at].header = defineHeader;
            sentences[at].name = defineNames[at];
            while (test::SubstituteOncePlainly(body, defines)) ++replaced;
            defines.push_back({std::string(sentences[at].name), body});
        }
        const std::string formula = RandomWords(random, 12, count);
        std::string plain = formula;
        sentences.Add(formula);
        sentences.IndexNames();
        while (test::SubstituteOncePlainly(plain, defines)) ++replaced;

        std::string error;
        SubstituteDefines(sentences, error);
        ASSERT_EQ(error, "") << formula;
        ASSERT_EQ(sentences[count].text.View(), plain) << formula;
        for (int at = 0; at < count; ++at) {
            const std::string& body = defines[static_cast<std::size_t>(at)].text;
            ASSERT_EQ(sentences[at].text.View(), body) << sentences[at].source;
        }
    }
    EXPECT_GT(replaced, 10'000);
}

// Whether the substitution goes on for ever. What these short texts have to replace is done after
// a few hundred replacements otherwise.
bool IsEndlessPlainly(std::string text, const std::vector<test::PlainDefine>& defines) {
    for (int i = 0; i < 600; ++i) {
        if (!test::SubstituteOncePlainly(text, defines)) return false;
    }
    return true;
}

TEST(Defines, HaveNoEndWhereThePlainFormHasNone) {
    constexpr int count = 3;
    Random random(23);
    int endlessOnes = 0, finished = 0;
    for (int i = 0; i < 4'000; ++i) {
        SentenceList sentences;
        std::vector<test::PlainDefine> defines;
        std::string message;
        const auto check = [&](const std::string& text, int number) {
            if (!message.empty() || !IsEndlessPlainly(text, defines)) return;
            message = "C001-09: define substitution in sentence " + std::to_string(number) +
                      " does not end.";
        };
        for (int at = 0; at < count; ++at) {
            // A define may hold its own name.
            std::string body = RandomWords(random, 5, at + 1);
            sentences.Add(body);
            sentences[at].header = defineHeader;
            sentences[at].name = defineNames[at];
            check(body, at + 1);
            while (message.empty() && test::SubstituteOncePlainly(body, defines)) {
            }
            defines.push_back({std::string(sentences[at].name), body});
        }
        const std::string formula = RandomWords(random, 6, count);
        sentences.Add(formula);
        check(formula, count + 1);
        sentences.IndexNames();

        std::string error;
        SubstituteDefines(sentences, error);
        ASSERT_EQ(error, message) << sentences[0].source << " ; " << sentences[1].source << " ; "
                                  << sentences[2].source << " ; " << formula;
        ++(message.empty() ? finished : endlessOnes);
    }
    EXPECT_GT(endlessOnes, 200);
    EXPECT_GT(finished, 1000);
}

TEST(Constants, AreFoldedAsInThePlainForm) {
    constexpr std::string_view pieces[] = {
        "e",   "pi", "true", "false", "fault", "fancy", "falsehood", "ex", "_",  "2",    "2e",
        "1.5", "(",  ")",    ",",     " ",     ",",     "plus(",     "E",  "fa", "fault"};
    Random random(19);
    int folded = 0;
    for (int i = 0; i < 40'000; ++i) {
        std::string text;
        for (int rest = random.Below(10); rest > 0; --rest) text += random.Pick(pieces);
        std::string plain = text;
        while (test::FoldOncePlainly(plain)) ++folded;
        EditBuffer buffer(text);
        FoldConstants(buffer);
        ASSERT_EQ(buffer.View(), plain) << text;
    }
    EXPECT_GT(folded, 5000);
}

}  // namespace
}  // namespace orvane
