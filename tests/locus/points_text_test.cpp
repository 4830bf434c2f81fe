#include "locus/points_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

namespace orvane {
namespace {

std::string WholeText(const LocusSet& set) {
    const NextPiece nextPiece = PointsText(set);
    std::string text;
    for (std::string piece = nextPiece(); !piece.empty(); piece = nextPiece()) text += piece;
    EXPECT_EQ(nextPiece(), "");
    return text;
}

TEST(PointsText, HoldsXYAndThePen) {
    LocusSet set;
    EXPECT_EQ(WholeText(set), "x,y,pen_up\n");
    constexpr double infinity = std::numeric_limits<double>::infinity();
    set.points = {{0, -0.5, true},
                  {0.1, 1e300, false},
                  {-1.0 / 3, 5e-324, true},
                  {infinity, -infinity, false}};
    EXPECT_EQ(WholeText(set),
              "x,y,pen_up\n0,-0.5,1\n0.1,1e+300,0\n-0.3333333333333333,5e-324,1\ninf,-inf,0\n");
}

TEST(PointsText, ComesInPieces) {
    LocusSet set;
    for (const std::size_t count : {std::size_t{4095}, std::size_t{4096}, std::size_t{4097}}) {
        SCOPED_TRACE(count);
        set.points.assign(count, {1, 2, false});
        const NextPiece nextPiece = PointsText(set);
        const std::string first = nextPiece();
        EXPECT_EQ(std::count(first.begin(), first.end(), '\n'),
                  static_cast<std::ptrdiff_t>(std::min(count, std::size_t{4096}) + 1));
        EXPECT_EQ(nextPiece(), count > 4096 ? "1,2,0\n" : "");
    }
}

struct NameRow {
    int sentenceIndex;
    LocusKind kind;
    const char* name;
};
constexpr NameRow nameRows[] = {
    {0, LocusKind::xy, "1_xy"},
    {2, LocusKind::polar, "3_polar"},
    {3, LocusKind::parametric, "4_parametric"},
    {std::numeric_limits<std::int32_t>::max(), LocusKind::xy, "2147483648_xy"},
};

TEST(PointsName, TellsSentenceAndKind) {
    for (const auto& [sentenceIndex, kind, name] : nameRows) {
        LocusSet set;
        set.sentenceIndex = sentenceIndex;
        set.kind = kind;
        EXPECT_EQ(PointsName(set), name);
    }
}

TEST(CurveNames, NumberThoseOfOneKindInASentence) {
    LocusSet xy;
    LocusSet polar;
    polar.kind = LocusKind::polar;
    LocusSet next;
    next.sentenceIndex = 1;
    CurveNames names;
    EXPECT_EQ(names.NextName(xy), "1_xy");
    EXPECT_EQ(names.NextName(polar), "1_polar");
    EXPECT_EQ(names.NextName(xy), "1_xy_2");
    EXPECT_EQ(names.NextName(next), "2_xy");
    EXPECT_EQ(names.NextName(xy), "1_xy_3");
    EXPECT_EQ(names.NextName(polar), "1_polar_2");
}

}  // namespace
}  // namespace orvane
