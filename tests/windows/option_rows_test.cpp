#include "windows/option_rows.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "tests/support/prepared_answers.h"

namespace orvane {

void PrintTo(const ColourRowLayout::Area& area, std::ostream* out) {
    *out << area.left << ' ' << area.top << ' ' << area.right << ' ' << area.bottom;
}

namespace {

using Area = ColourRowLayout::Area;
using test::PreparedAnswers;

struct ColourRow {
    const char* label;
    int buttonId;
    int buttonTop;
    Colour defaultColour;
    const char* defaultCode;
};

constexpr ColourRow colourRows[] = {
    {"Header keyword", 1027, 7, 0x008000, "00 80 00"},
    {"Common keyword", 1028, 24, 0x0000FF, "FF 00 00"},
    {"Normal text", 1029, 41, 0x000000, "00 00 00"},
    {"String", 1030, 58, 0x000000, "00 00 00"},
    {"Number", 1031, 75, 0x800080, "80 00 80"},
    {"Symbol", 1032, 92, 0xFF0000, "00 00 FF"},
    {"Comment", 1033, 109, 0x808080, "80 80 80"},
};

TEST(ColourRows, HaveALabelAButtonAndADefaultEach) {
    ASSERT_EQ(std::size(colourRows), textClassCount);
    EXPECT_EQ(colourButtonLeft, 151);
    for (std::size_t row = 0; row < textClassCount; ++row) {
        SCOPED_TRACE(colourRows[row].label);
        EXPECT_STREQ(textClassNames[row], colourRows[row].label);
        EXPECT_EQ(ColourButtonId(row), colourRows[row].buttonId);
        EXPECT_EQ(colourButtonTops[row], colourRows[row].buttonTop);
        EXPECT_EQ(defaultTextColours[row], colourRows[row].defaultColour);
        EXPECT_EQ(ColourCode(defaultTextColours[row]), colourRows[row].defaultCode);
    }
}

struct CodeRow {
    Colour colour;
    const char* code;
};

constexpr CodeRow codeRows[] = {
    {ColourFrom(0, 0, 0), "00 00 00"},
    {ColourFrom(255, 255, 255), "FF FF FF"},
    {ColourFrom(1, 2, 3), "01 02 03"},
    {ColourFrom(10, 11, 12), "0A 0B 0C"},
    {ColourFrom(16, 160, 171), "10 A0 AB"},
    {ColourFrom(205, 239, 9), "CD EF 09"},
    {0xFF785634, "34 56 78"},  // what stands above blue is not shown
};

TEST(ColourCode, IsRedGreenAndBlueInHexadecimal) {
    for (const auto& [colour, code] : codeRows) {
        SCOPED_TRACE(code);
        EXPECT_EQ(ColourCode(colour), code);
    }
}

TEST(LayOutColourRow, StandsInFrontOfItsButton) {
    const ColourRowLayout layout = LayOutColourRow(0, {227, 11, 245, 29});
    // From 16 to 217: the swatch begins at 110 and the halves of the rest meet at 163.
    EXPECT_EQ(layout.label, (Area{16, 13, 110, 27}));
    EXPECT_EQ(layout.swatch, (Area{110, 13, 159, 27}));
    EXPECT_EQ(layout.code, (Area{167, 13, 217, 27}));
    EXPECT_EQ(layout.repainted, (Area{0, 13, 227, 27}));
}

TEST(LayOutColourRow, CountsFromTheLeftEdgeOfTheClientArea) {
    const ColourRowLayout layout = LayOutColourRow(5, {200, 40, 218, 60});
    EXPECT_EQ(layout.label, (Area{21, 42, 99, 58}));
    EXPECT_EQ(layout.swatch, (Area{99, 42, 140, 58}));
    EXPECT_EQ(layout.code, (Area{148, 42, 190, 58}));
    EXPECT_EQ(layout.repainted, (Area{5, 42, 200, 58}));
}

constexpr TextColours ownColours = {1, 2, 3, 4, 5, 6, 7};

TEST(TextColourChoice, StartsWithTheColoursOfTheEditor) {
    const TextColourChoice choice(ownColours);
    EXPECT_EQ(choice.Colours(), ownColours);
    EXPECT_EQ(choice.Confirmed(), std::nullopt);
}

TEST(TextColourChoice, ChangesOneRowAtATime) {
    for (std::size_t row = 0; row < textClassCount; ++row) {
        SCOPED_TRACE(row);
        TextColourChoice choice(ownColours);
        EXPECT_TRUE(choice.Choose(row, ColourFrom(9, 8, 7)));
        TextColours expected = ownColours;
        expected[row] = ColourFrom(9, 8, 7);
        EXPECT_EQ(choice.Colours(), expected);
        EXPECT_EQ(choice.Confirmed(), expected);
    }
}

TEST(TextColourChoice, HasNothingToPaintWhenTheSameColourIsChosen) {
    TextColourChoice choice(ownColours);
    EXPECT_FALSE(choice.Choose(4, 5));
    EXPECT_EQ(choice.Confirmed(), std::nullopt);
    EXPECT_TRUE(choice.Choose(4, 6));
    EXPECT_FALSE(choice.Choose(4, 6));
}

TEST(TextColourChoice, CountsAColourPickedBackAsNoChange) {
    TextColourChoice choice(ownColours);
    EXPECT_TRUE(choice.Choose(2, ColourFrom(200, 0, 0)));
    EXPECT_TRUE(choice.Choose(2, ownColours[2]));
    EXPECT_EQ(choice.Confirmed(), std::nullopt);
}

TEST(TextColourChoice, RestoresTheDefaultsOnYes) {
    PreparedAnswers questions;
    questions.answers = {Answer::yes};
    TextColourChoice choice(ownColours);
    EXPECT_TRUE(choice.Restore(questions));
    EXPECT_EQ(questions.Asked(),
              (std::vector<std::string>{"[Confirm] Restore to default colors?"}));
    EXPECT_EQ(choice.Colours(), defaultTextColours);
    EXPECT_EQ(choice.Confirmed(), defaultTextColours);
}

TEST(TextColourChoice, KeepsTheChosenColoursOnNo) {
    PreparedAnswers questions;
    questions.answers = {Answer::no};
    TextColourChoice choice(ownColours);
    choice.Choose(0, 100);
    EXPECT_FALSE(choice.Restore(questions));
    EXPECT_EQ(questions.Asked(),
              (std::vector<std::string>{"[Confirm] Restore to default colors?"}));
    EXPECT_EQ(choice.Colours(), (TextColours{100, 2, 3, 4, 5, 6, 7}));
}

TEST(TextColourChoice, CountsARestoreOfTheDefaultsAsNoChange) {
    PreparedAnswers questions;
    questions.answers = {Answer::yes};
    TextColourChoice choice(defaultTextColours);
    choice.Choose(6, 100);
    EXPECT_NE(choice.Confirmed(), std::nullopt);
    EXPECT_TRUE(choice.Restore(questions));
    EXPECT_EQ(choice.Confirmed(), std::nullopt);
}

TEST(TextColourChoice, LeavesTheColoursOfTheEditorAloneUntilItIsConfirmed) {
    PreparedAnswers questions;
    questions.answers = {Answer::yes};
    TextColours editorColours = ownColours;
    TextColourChoice choice(editorColours);
    choice.Choose(3, 100);
    choice.Restore(questions);
    EXPECT_EQ(editorColours, ownColours);
}

constexpr const char* fineTexts[] = {"0 - best", "1",  "2",  "3",  "4",  "5",  "6",
                                     "7",        "8",  "9",  "10", "11", "12", "13",
                                     "14",       "15", "16", "17", "18", "19"};

TEST(FineRows, AreTwentyWithTheBestOneFirst) {
    ASSERT_EQ(fineRowCount, 20);
    ASSERT_EQ(std::size(fineTexts), 20u);
    for (int row = 0; row < fineRowCount; ++row) {
        SCOPED_TRACE(row);
        EXPECT_EQ(FineRowText(row), fineTexts[row]);
        EXPECT_EQ(FineRowOf(row), row);
    }
}

TEST(FineRows, HaveNoRowForAnyOtherNumber) {
    for (const std::int32_t locusFine : {-1, -20, 20, 74, std::numeric_limits<std::int32_t>::min(),
                                         std::numeric_limits<std::int32_t>::max()}) {
        SCOPED_TRACE(locusFine);
        EXPECT_EQ(FineRowOf(locusFine), noFineRow);
    }
}

}  // namespace
}  // namespace orvane
