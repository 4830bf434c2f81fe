#include "locus/locus_layout.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace orvane {
namespace {

struct CornerRow {
    PlotRect client;
    int buttonWidth;
    PlotPoint corner;
};
constexpr CornerRow cornerRows[] = {
    {{0, 0, 600, 400}, 80, {260, 200}},
    {{0, 0, 601, 401}, 81, {260, 200}},  // each half is rounded for itself
    {{10, 20, 110, 220}, 50, {35, 120}},
    {{0, 0, 20, 10}, 80, {-30, 5}},
};

TEST(LocusLayout, PutsHelpIntoTheCentre) {
    for (const auto& [client, buttonWidth, corner] : cornerRows) {
        SCOPED_TRACE(client.right);
        EXPECT_EQ(HelpButtonCorner(client, buttonWidth), corner);
    }
}

TEST(LocusLayout, SaysWhereHelpIsAboveTheButton) {
    EXPECT_EQ(std::string(noCurvesText), "Please click button Help for assistance");
    EXPECT_EQ(std::string(locusHelpTopic), "function/variable/locus.htm");
    EXPECT_EQ(NoCurvesTextArea({0, 0, 600, 400}), (PlotRect{0, 0, 600, 180}));
    EXPECT_EQ(NoCurvesTextArea({4, 10, 301, 111}), (PlotRect{4, 10, 301, 40}));
}

TEST(LocusLayout, FillsTheWindowWithTabsAndPages) {
    EXPECT_EQ(TabControlArea({0, 0, 600, 400}), (PlotRect{10, 10, 590, 390}));
    EXPECT_EQ(PageArea({0, 0, 600, 400}, 21), (PlotRect{12, 35, 588, 388}));
    EXPECT_EQ(TabControlArea({5, 6, 605, 406}), (PlotRect{15, 16, 595, 396}));
    EXPECT_EQ(PageArea({5, 6, 605, 406}, 0), (PlotRect{17, 20, 593, 394}));
}

struct TitleRow {
    std::int32_t sentenceIndex;
    LocusKind kind;
    const char* title;
};
constexpr TitleRow titleRows[] = {
    {0, LocusKind::xy, "1: xy"},
    {1, LocusKind::polar, "2: polar"},
    {9, LocusKind::parametric, "10: param"},
    {std::numeric_limits<std::int32_t>::max(), LocusKind::xy, "2147483648: xy"},
};

TEST(LocusLayout, NamesATabAfterSentenceAndKind) {
    for (const auto& [sentenceIndex, kind, title] : titleRows) {
        SCOPED_TRACE(title);
        LocusSet set;
        set.sentenceIndex = sentenceIndex;
        set.kind = kind;
        EXPECT_EQ(TabTitle(set), title);
    }
}

}  // namespace
}  // namespace orvane
