#include "editor/selection_rows.h"

#include <gtest/gtest.h>

#include <ostream>

#include "editor_checks.h"

namespace orvane {

inline void PrintTo(const CellStretch& stretch, std::ostream* out) {
    *out << "cells " << stretch.from << " to " << stretch.to;
}

namespace {

using test::Range;

TEST(RowsCovered, ReachesFromEndToEndInEitherOrder) {
    EXPECT_EQ(RowsCovered(Range({1, 4}, {3, 0})), (RowSpan{1, 3}));
    EXPECT_EQ(RowsCovered(Range({3, 0}, {1, 4})), (RowSpan{1, 3}));
    EXPECT_EQ(RowsCovered(Range({2, 0}, {2, 1})), (RowSpan{2, 2}));
    EXPECT_TRUE(RowsCovered(Range({2, 1}, {2, 1})).IsEmpty());
}

TEST(RowSpan, JoinsWithWhatIsBesideIt) {
    EXPECT_EQ((RowSpan{1, 2}.With({4, 5})), (RowSpan{1, 5}));
    EXPECT_EQ((RowSpan{4, 5}.With({1, 4})), (RowSpan{1, 5}));
    EXPECT_EQ((RowSpan{4, 5}.With({})), (RowSpan{4, 5}));
    EXPECT_EQ((RowSpan{}.With({4, 5})), (RowSpan{4, 5}));
    EXPECT_TRUE((RowSpan{}.With({})).IsEmpty());
}

TEST(RowsBetween, HoldsBothLines) {
    EXPECT_EQ(RowsBetween(2, 5), (RowSpan{2, 5}));
    EXPECT_EQ(RowsBetween(5, 2), (RowSpan{2, 5}));
    EXPECT_EQ(RowsBetween(3, 3), (RowSpan{3, 3}));
}

struct StretchRow {
    const char* name;
    SelRange selection;
    std::int32_t line;
    std::optional<CellStretch> cells;
};

TEST(SelectedCells, FillsAllRowsButTheLastToTheirEnds) {
    TextLines text;
    text.SetText("abcdef\n\tx\ty\n\nlast");
    const StretchRow rows[] = {
        {"within a row", Range({0, 1}, {0, 3}), 0, CellStretch{1, 3}},
        {"backward", Range({0, 3}, {0, 1}), 0, CellStretch{1, 3}},
        {"behind tabs", Range({1, 1}, {1, 3}), 1, CellStretch{4, 8}},
        {"the first of several", Range({0, 2}, {3, 1}), 0, CellStretch{2, 6}},
        {"the first of several, backward", Range({3, 1}, {0, 2}), 0, CellStretch{2, 6}},
        {"one between", Range({0, 2}, {3, 1}), 1, CellStretch{0, 9}},
        {"an empty row between", Range({0, 2}, {3, 1}), 2, CellStretch{0, 0}},
        {"the last of several", Range({0, 2}, {3, 1}), 3, CellStretch{0, 1}},
        {"the last, up to its start", Range({0, 2}, {3, 0}), 3, CellStretch{0, 0}},
        {"the first, from its end on", Range({0, 6}, {1, 1}), 0, CellStretch{6, 6}},
        {"an empty first row", Range({2, 0}, {3, 1}), 2, CellStretch{0, 0}},
        {"above", Range({1, 0}, {2, 0}), 0, std::nullopt},
        {"below", Range({1, 0}, {2, 0}), 3, std::nullopt},
        {"nothing selected", Range({1, 1}, {1, 1}), 1, std::nullopt},
    };
    for (const auto& [name, selection, line, cells] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(SelectedCells(text, selection, line), cells);
    }
}

}  // namespace
}  // namespace orvane
