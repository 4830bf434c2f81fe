#include "core/sentence.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace orvane {
namespace {

TEST(Sentence, StartsWithItsTextAndNothingElse) {
    const Sentence sentence(" a = 1 ");
    EXPECT_EQ(sentence.source, " a = 1 ");
    EXPECT_EQ(sentence.text.View(), " a = 1 ");
    EXPECT_EQ(sentence.error, "");
    EXPECT_EQ(sentence.header, "");
    EXPECT_EQ(sentence.name, "");
    EXPECT_FALSE(sentence.root.evaluated);
    EXPECT_EQ(sentence.root.kind, NodeKind::none);
}

TEST(Sentence, HasItsKindFromItsHeaderAlone) {
    struct Row {
        std::string_view header;
        bool text, define, calculation;
    };
    constexpr Row rows[] = {
        {"", false, false, true},        {"text", true, false, false},
        {"define", false, true, false},  {"hex", false, false, true},
        {"hide", false, false, true},    {"Text", false, false, true},
        {"defines", false, false, true}, {"nosuch", false, false, true},
    };
    for (const auto& [header, text, define, calculation] : rows) {
        SCOPED_TRACE(header);
        Sentence sentence("1");
        sentence.header = header;
        EXPECT_EQ(sentence.IsText(), text);
        EXPECT_EQ(sentence.IsDefine(), define);
        EXPECT_EQ(sentence.IsCalculation(), calculation);
    }
}

TEST(SentenceList, KeepsTheTextsOfAKeptSheetApart) {
    const std::string longText(5000, 'x');
    SentenceList first;
    const std::string_view sheet = first.KeepSheet("a=1;" + longText + ";b=2");
    first.Add(sheet.substr(0, 3));
    first.Add(sheet.substr(4, 5000));
    first.Add(sheet.substr(5005));
    first[0].text.Assign("12");
    first[1].text.Assign("longer" + longText);
    SentenceList sentences = std::move(first);
    EXPECT_EQ(sentences[0].text.View(), "12");
    EXPECT_EQ(sentences[1].text.View(), "longer" + longText);
    EXPECT_EQ(sentences[2].text.View(), "b=2");
    sentences[0].text.Assign("longer");
    EXPECT_EQ(sentences[2].text.View(), "b=2");
    EXPECT_EQ(sentences[0].source, "a=1");
    EXPECT_EQ(sentences[1].source, longText);
    EXPECT_EQ(sentences[2].source, "b=2");
}

TEST(SentenceList, HoldsManySentencesWhereTheyAre) {
    SentenceList sentences;
    sentences.Add("first");
    const Sentence* const first = &sentences[0];
    for (int i = 0; i < 2000; ++i) sentences.Add("more");
    EXPECT_EQ(&sentences[0], first);
    EXPECT_EQ(sentences.Count(), 2001);
    EXPECT_EQ(sentences[2000].source, "more");
    sentences.KeepFirst(0);
    EXPECT_TRUE(sentences.IsEmpty());
    sentences.Add("again");
    EXPECT_EQ(sentences[0].text.View(), "again");
}

TEST(SentenceList, DropsBlankSentencesAndKeepsTheOrder) {
    SentenceList sentences;
    for (const std::string_view cut : {" ", "a", "", " \t\n ", "\n", " b", "c ", "\t"}) {
        sentences.Add(cut);
    }
    sentences.RemoveBlank();
    ASSERT_EQ(sentences.Count(), 3);
    EXPECT_EQ(sentences[0].source, "a");
    EXPECT_EQ(sentences[1].source, " b");
    EXPECT_EQ(sentences[2].source, "c ");
}

TEST(SentenceList, CountsOnlyBlanksTabsAndLineFeedsAsBlank) {
    SentenceList sentences;
    sentences.Add("\v");
    sentences.Add("\xA0");
    sentences.RemoveBlank();
    EXPECT_EQ(sentences.Count(), 2);
}

TEST(SentenceList, IsEmptyWhenNothingIsLeft) {
    SentenceList sentences;
    EXPECT_TRUE(sentences.IsEmpty());
    sentences.Add("  ");
    EXPECT_FALSE(sentences.IsEmpty());
    sentences.RemoveBlank();
    EXPECT_TRUE(sentences.IsEmpty());
}

TEST(SentenceList, FindsTheFirstOfEqualNamesOfEachKind) {
    struct Row {
        std::string_view header, name;
    };
    constexpr Row rows[] = {{"", "f"},       {"define", "d"}, {"text", "t"}, {"hex", "f"},
                            {"define", "f"}, {"", "d"},       {"", ""}};
    SentenceList sentences;
    for (const auto& [header, name] : rows) {
        sentences.Add("1");
        sentences[sentences.Count() - 1].header = header;
        sentences[sentences.Count() - 1].name = name;
    }
    sentences.IndexNames();
    EXPECT_EQ(sentences.FirstFormula("f"), 0);
    EXPECT_EQ(sentences.FirstDefine("f"), 4);
    EXPECT_EQ(sentences.FirstDefine("d"), 1);
    EXPECT_EQ(sentences.FirstFormula("d"), 5);
    EXPECT_EQ(sentences.FirstFormula("t"), -1);
    EXPECT_EQ(sentences.FirstDefine("t"), -1);
    EXPECT_EQ(sentences.FirstFormula("F"), -1);
    EXPECT_EQ(sentences.FirstFormula(""), -1);
    EXPECT_EQ(sentences.FirstDefine(""), -1);
}

}  // namespace
}  // namespace orvane
