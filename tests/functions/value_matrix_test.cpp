#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "functions/value.h"
#include "tests/functions/value_checks.h"

namespace orvane {
namespace {

using test::Rows;
using test::RowsOf;
using test::SameBits;
using test::TableOf;

constexpr double infinite = std::numeric_limits<double>::infinity();

// --- The operations once more, step by step on plain rows.

bool EliminatePlainly(Rows& rows) {
    int swaps = 0;
    const std::size_t columns = rows.empty() ? 0 : rows[0].size();
    for (std::size_t k = 0; k < rows.size() && k < columns; ++k) {
        std::size_t best = k;
        for (std::size_t i = k + 1; i < rows.size(); ++i) {
            if (std::fabs(rows[i][k]) > std::fabs(rows[best][k])) best = i;
        }
        if (best != k) {
            std::swap(rows[best], rows[k]);
            ++swaps;
        }
        if (rows[k][k] == 0) continue;
        for (std::size_t i = k + 1; i < rows.size(); ++i) {
            const double f = rows[i][k] / rows[k][k];
            for (std::size_t j = k; j < columns; ++j) rows[i][j] = rows[i][j] - rows[k][j] * f;
        }
    }
    return swaps % 2 == 1;
}

double DeterminantPlainly(Rows rows) {
    const bool odd = EliminatePlainly(rows);
    double product = 1.0;
    for (std::size_t k = 0; k < rows.size(); ++k) product = product * rows[k][k];
    return odd ? -product : product;
}

int RankPlainly(Rows rows) {
    EliminatePlainly(rows);
    int rank = 0;
    for (std::size_t k = 0; k < rows.size() && k < rows[0].size(); ++k) {
        if (rows[k][k] != 0) ++rank;
    }
    return rank;
}

Rows MinorPlainly(std::size_t row, std::size_t column, Rows rows) {
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(row));
    for (auto& cells : rows) cells.erase(cells.begin() + static_cast<std::ptrdiff_t>(column));
    return rows;
}

Rows AdjointPlainly(const Rows& rows) {
    if (rows.size() == 1) return {{1}};
    Rows adjoint(rows.size(), std::vector<double>(rows.size(), 1.0));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (std::size_t j = 0; j < rows.size(); ++j) {
            double cofactor = DeterminantPlainly(MinorPlainly(i, j, rows));
            if ((i + j) % 2 == 1) cofactor = -cofactor;
            adjoint[j][i] = cofactor;
        }
    }
    return adjoint;
}

// --- Tables to try: of any doubles, and of few small whole numbers, which bring equal pivots,
// pivots of 0 and singular tables.

Rows RandomRows(std::mt19937& random, std::size_t rowCount, std::size_t columnCount, bool whole) {
    Rows rows(rowCount, std::vector<double>(columnCount));
    for (auto& row : rows) {
        for (double& cell : row) {
            cell = whole ? static_cast<double>(random() % 5) - 2.0 : random() / 2147483648.0 - 1.0;
        }
    }
    return rows;
}

// Well away from singular.
Rows RegularRows(std::mt19937& random, std::size_t size) {
    Rows rows = RandomRows(random, size, size, false);
    for (std::size_t at = 0; at < size; ++at) rows[at][at] += static_cast<double>(size);
    return rows;
}

double DeterminantOf(const Rows& rows) {
    Value value = TableOf(rows);
    return value.Determinant();
}

Rows ProductOf(const Rows& left, const Rows& right) {
    Value value;
    EXPECT_TRUE(value.MultiplyMatrices(TableOf(left), TableOf(right)));
    return RowsOf(value);
}

TEST(EliminateRows, FollowsTheStatedOrderToTheLastBit) {
    std::mt19937 random(3001);
    for (int round = 0; round < 400; ++round) {
        const Rows rows = RandomRows(random, 1 + random() % 8, 1 + random() % 8, round % 2 == 0);
        Rows expected = rows;
        const bool odd = EliminatePlainly(expected);
        Value value = TableOf(rows);
        EXPECT_EQ(value.EliminateRows(), odd) << TableOf(rows).ToText(-1);
        EXPECT_TRUE(SameBits(RowsOf(value), expected)) << TableOf(rows).ToText(-1);
    }
}

TEST(EliminateRows, TakesTheLargestPivotAndAmongEqualsTheFirst) {
    struct {
        Rows rows, eliminated;
        bool odd;
    } const cases[] = {
        {{{1, 2}, {3, 4}}, {{3, 4}, {0, 2 - 4 * (1.0 / 3.0)}}, true},
        {{{3, 4}, {1, 2}}, {{3, 4}, {0, 2 - 4 * (1.0 / 3.0)}}, false},
        {{{2, 1}, {-2, 5}, {2, 7}}, {{2, 1}, {0, 6}, {0, 0}}, false},
        {{{1, 1}, {-2, 5}, {2, 7}}, {{-2, 5}, {0, 12}, {0, 3.5 - 12 * (3.5 / 12)}}, false},
        {{{0, 1}, {0, 2}}, {{0, 1}, {0, 2}}, false},
        {{{0, 1, 0}, {0, 0, 1}}, {{0, 1, 0}, {0, 0, 1}}, false},
        {{{5}}, {{5}}, false},
        {{{1, 2, 3}}, {{1, 2, 3}}, false},
        {{{1}, {4}, {2}}, {{4}, {0}, {0}}, true},
        {{}, {}, false},
    };
    for (const auto& [rows, eliminated, odd] : cases) {
        SCOPED_TRACE(TableOf(rows).ToText(0));
        Value value = TableOf(rows);
        EXPECT_EQ(value.EliminateRows(), odd);
        EXPECT_EQ(RowsOf(value), eliminated);
    }
}

// No function passes such a table on; it must not harm all the same.
TEST(EliminateRows, StaysInsideARaggedTable) {
    const Rows tables[] = {
        {{1, 2, 3}, {4}}, {{1}, {2, 3, 4}, {5, 6}}, {{1, 2}, {}, {3, 4}}, {{}, {1}}};
    for (const Rows& rows : tables) {
        SCOPED_TRACE(TableOf(rows).ToText(0));
        Value value = TableOf(rows);
        value.EliminateRows();
        ASSERT_EQ(value.RowCount(), static_cast<std::int32_t>(rows.size()));
        std::int32_t shortest = 3;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            const std::int32_t length = value.RowLength(static_cast<std::int32_t>(row));
            EXPECT_EQ(length, static_cast<std::int32_t>(rows[row].size()));
            shortest = std::min(shortest, length);
        }
        EXPECT_LE(value.RankOf(), shortest);
        if (shortest == 0) {
            EXPECT_EQ(value.Determinant(), 1.0);
        }
        value.TransposeSquare();
        Value minor;
        minor.MinorOf(0, 1, value);
        EXPECT_EQ(minor.RowCount(), value.RowCount() - 1);
    }
}

TEST(Determinant, HasConcreteValues) {
    const std::pair<Rows, double> cases[] = {
        {{}, 1},
        {{{7}}, 7},
        {{{1, 2}, {3, 4}}, -2},
        {{{3, 4}, {1, 2}}, 2},
        {{{1, 2}, {2, 4}}, 0},
        {{{0, 1}, {1, 0}}, -1},
        {{{0, 0}, {0, 0}}, 0},
        {{{2, 0, 0}, {0, 3, 0}, {0, 0, 4}}, 24},
        {{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}, 1},
        {{{2, -1, 0}, {-1, 2, -1}, {0, -1, 2}}, 4},
        {{{infinite}}, infinite},
    };
    for (const auto& [rows, determinant] : cases) {
        SCOPED_TRACE(TableOf(rows).ToText(0));
        EXPECT_EQ(DeterminantOf(rows), determinant);
        EXPECT_TRUE(test::SameBits(DeterminantOf(rows), DeterminantPlainly(rows)));
    }
    // By way of one swap: rows (3, 4) and (0, 0.666...).
    EXPECT_EQ(DeterminantOf({{1, 2}, {3, 4}}), -(3 * (2 - 4 * (1.0 / 3.0))));
}

TEST(Determinant, IsThatOfPlainStepsToTheLastBit) {
    std::mt19937 random(3002);
    for (int round = 0; round < 300; ++round) {
        const std::size_t size = 1 + random() % 9;
        const Rows rows = RandomRows(random, size, size, round % 2 == 0);
        EXPECT_TRUE(test::SameBits(DeterminantOf(rows), DeterminantPlainly(rows)));
    }
}

TEST(Determinant, OfATriangleIsTheProductOfItsDiagonal) {
    std::mt19937 random(3003);
    for (int round = 0; round < 100; ++round) {
        Rows rows = RandomRows(random, 6, 6, true);
        double product = 1.0;
        for (std::size_t i = 0; i < 6; ++i) {
            for (std::size_t j = 0; j < i; ++j) rows[i][j] = 0;
            product *= rows[i][i];
        }
        EXPECT_EQ(DeterminantOf(rows), product);
    }
}

TEST(Determinant, OfAPermutationIsItsSign) {
    std::mt19937 random(3004);
    for (int round = 0; round < 100; ++round) {
        Rows rows(7, std::vector<double>(7));
        for (std::size_t at = 0; at < 7; ++at) rows[at][at] = 1;
        double sign = 1;
        for (int swap = 0; swap < 10; ++swap) {
            const std::size_t from = random() % 7, to = random() % 7;
            std::swap(rows[from], rows[to]);
            if (from != to) sign = -sign;
        }
        EXPECT_EQ(DeterminantOf(rows), sign);
    }
}

// Each determinant is at most the product of its rows' lengths, here below 15; rounding may cost
// a small part of that.
TEST(Determinant, OfAProductIsTheProductOfDeterminants) {
    std::mt19937 random(3005);
    for (int round = 0; round < 100; ++round) {
        const std::size_t size = 1 + random() % 6;
        const Rows a = RandomRows(random, size, size, false);
        const Rows b = RandomRows(random, size, size, false);
        EXPECT_NEAR(DeterminantOf(ProductOf(a, b)), DeterminantOf(a) * DeterminantOf(b), 1e-12);
    }
}

TEST(Determinant, OfTheTransposedTableIsTheSame) {
    std::mt19937 random(3006);
    for (int round = 0; round < 100; ++round) {
        const Rows rows = RegularRows(random, 1 + random() % 6);
        Value transposed = TableOf(rows);
        transposed.TransposeSquare();
        const double determinant = DeterminantOf(rows);
        EXPECT_NEAR(transposed.Determinant(), determinant, 1e-12 * std::fabs(determinant));
    }
}

TEST(Determinant, MastersAnyShapeWithoutReadingOutside) {
    EXPECT_EQ(DeterminantOf({{2, 9, 9}}), 2);
    EXPECT_EQ(DeterminantOf({{2}, {4}, {1}}), -4);
}

TEST(Determinant, OfALargeTableIsThatOfPlainSteps) {
    std::mt19937 random(3007);
    const Rows rows = RandomRows(random, 120, 120, false);
    EXPECT_TRUE(test::SameBits(DeterminantOf(rows), DeterminantPlainly(rows)));
}

TEST(RankOf, CountsWhatIsLeftOnTheDiagonal) {
    struct {
        Rows rows;
        std::int32_t rank;
    } const cases[] = {
        {{{1, 2}, {3, 4}}, 2},
        {{{1, 2}, {2, 4}}, 1},
        {{{0, 0}, {0, 0}}, 0},
        {{{5}}, 1},
        {{{0}}, 0},
        {{{0, 3}}, 0},
        {{{1, 2, 3}, {4, 5, 6}}, 2},
        {{{1, 2}, {3, 4}, {5, 6}}, 2},
        // The column without a pivot spends its row.
        {{{0, 1, 0}, {0, 0, 1}}, 0},
        {{{0, 1}, {0, 2}}, 1},
        {{}, 0},
        // Of rank 1 but for rounding: 1 - 49 x (1 / 49) is no 0.
        {{{49, 49}, {1, 1}}, 2},
    };
    for (const auto& [rows, rank] : cases) {
        SCOPED_TRACE(TableOf(rows).ToText(0));
        Value value = TableOf(rows);
        EXPECT_EQ(value.RankOf(), rank);
    }
}

TEST(RankOf, IsThatOfPlainSteps) {
    std::mt19937 random(3008);
    for (int round = 0; round < 300; ++round) {
        const Rows rows = RandomRows(random, 1 + random() % 6, 1 + random() % 6, true);
        Value value = TableOf(rows);
        EXPECT_EQ(value.RankOf(), RankPlainly(rows)) << TableOf(rows).ToText(0);
    }
}

TEST(TransposeSquare, SwapsRowsAndColumns) {
    Value value = TableOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    value.TransposeSquare();
    EXPECT_EQ(RowsOf(value), (Rows{{1, 4, 7}, {2, 5, 8}, {3, 6, 9}}));
    value = TableOf({{5}});
    value.TransposeSquare();
    EXPECT_EQ(RowsOf(value), (Rows{{5}}));
}

TEST(TransposeSquare, TwiceChangesNothing) {
    std::mt19937 random(3009);
    for (std::size_t size = 0; size <= 9; ++size) {
        const Rows rows = RandomRows(random, size, size, false);
        Value value = TableOf(rows);
        value.TransposeSquare();
        value.TransposeSquare();
        EXPECT_EQ(RowsOf(value), rows);
    }
}

TEST(MinorOf, LeavesOutARowAndAColumn) {
    const Value source = TableOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    struct {
        std::int32_t row, column;
        Rows rows;
    } const cases[] = {
        {0, 0, {{5, 6}, {8, 9}}}, {0, 2, {{4, 5}, {7, 8}}}, {1, 1, {{1, 3}, {7, 9}}},
        {2, 0, {{2, 3}, {5, 6}}}, {2, 2, {{1, 2}, {4, 5}}}, {1, 2, {{1, 2}, {7, 8}}},
    };
    Value minor = TableOf({{9, 9, 9, 9}}, true);
    for (const auto& [row, column, rows] : cases) {
        minor.MinorOf(row, column, source);
        EXPECT_EQ(RowsOf(minor), rows);
        EXPECT_FALSE(minor.complexMark);
    }
    minor.MinorOf(1, 0, TableOf({{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(RowsOf(minor), (Rows{{2, 3}}));
    minor.MinorOf(1, 1, TableOf({{1, 2}, {3, 4}}));
    EXPECT_EQ(RowsOf(minor), (Rows{{1}}));
}

TEST(MinorOf, GivesOnesForASingleRowOrColumn) {
    const std::pair<Rows, Rows> cases[] = {
        {{{7}}, {{1}}},
        {{{7, 8}}, {{1}}},
        {{{7, 8, 9}}, {{1, 1}}},
        {{{7}, {8}}, {{1}}},
        {{{7}, {8}, {9}}, {{1}, {1}}},
    };
    for (const auto& [source, rows] : cases) {
        for (const std::int32_t index : {0, 1, 5}) {
            Value minor = TableOf({{9, 9, 9}}, true);
            minor.MinorOf(index, 2 - index / 2, TableOf(source, true));
            EXPECT_EQ(RowsOf(minor), rows);
            EXPECT_FALSE(minor.complexMark);
        }
    }
}

TEST(AdjointOf, HasConcreteValues) {
    const std::pair<Rows, Rows> cases[] = {
        {{{5}}, {{1}}},
        {{{0}}, {{1}}},
        {{{1, 2}, {3, 4}}, {{4, -2}, {-3, 1}}},
        {{{1, 2}, {2, 4}}, {{4, -2}, {-2, 1}}},
        {{{2, 0, 0}, {0, 3, 0}, {0, 0, 4}}, {{12, 0, 0}, {0, 8, 0}, {0, 0, 6}}},
        {{{1, 2, 0}, {0, 1, 0}, {0, 0, 1}}, {{1, -2, 0}, {0, 1, 0}, {0, 0, 1}}},
    };
    for (const auto& [source, adjoint] : cases) {
        SCOPED_TRACE(TableOf(source).ToText(0));
        Value value = TableOf({{9, 9}, {9, 9}}, true);
        value.AdjointOf(TableOf(source));
        EXPECT_EQ(RowsOf(value), adjoint);
        EXPECT_FALSE(value.complexMark);
    }
}

TEST(AdjointOf, IsThatOfPlainStepsToTheLastBit) {
    std::mt19937 random(3010);
    for (int round = 0; round < 100; ++round) {
        const std::size_t size = 1 + random() % 7;
        const Rows rows = RandomRows(random, size, size, round % 2 == 0);
        Value value;
        value.AdjointOf(TableOf(rows));
        EXPECT_TRUE(SameBits(RowsOf(value), AdjointPlainly(rows))) << TableOf(rows).ToText(-1);
    }
}

// A table times its adjoint is its determinant on the diagonal, here at most 8^6.
TEST(AdjointOf, TimesTheTableIsTheDeterminant) {
    std::mt19937 random(3011);
    for (std::size_t size = 2; size <= 6; ++size) {
        const Rows rows = RegularRows(random, size);
        Value adjoint;
        adjoint.AdjointOf(TableOf(rows));
        const Rows product = ProductOf(rows, RowsOf(adjoint));
        const double determinant = DeterminantOf(rows);
        for (std::size_t i = 0; i < size; ++i) {
            for (std::size_t j = 0; j < size; ++j) {
                EXPECT_NEAR(product[i][j], i == j ? determinant : 0.0, 1e-9);
            }
        }
    }
}

TEST(InverseOf, HasConcreteValues) {
    Value value;
    EXPECT_TRUE(value.InverseOf(TableOf({{2, 0}, {0, 4}})));
    EXPECT_EQ(RowsOf(value), (Rows{{0.5, 0}, {0, 0.25}}));
    EXPECT_TRUE(value.InverseOf(TableOf({{4}})));
    EXPECT_EQ(RowsOf(value), (Rows{{0.25}}));
    EXPECT_TRUE(value.InverseOf(TableOf({{0, 1}, {1, 0}})));
    EXPECT_EQ(RowsOf(value), (Rows{{0, 1}, {1, 0}}));
}

TEST(InverseOf, TouchesNothingWhenTheDeterminantIsZero) {
    const Rows singular[] = {{{0}}, {{1, 2}, {2, 4}}, {{0, 0}, {0, 0}}, {{1, 0}, {5, 0}}};
    for (const Rows& rows : singular) {
        Value value = TableOf({{7, 8, 9}});
        EXPECT_FALSE(value.InverseOf(TableOf(rows)));
        EXPECT_EQ(RowsOf(value), (Rows{{7, 8, 9}}));
    }
}

TEST(InverseOf, LeavesItsSourceAlone) {
    const Value source = TableOf({{1, 2}, {3, 4}});
    Value value;
    EXPECT_TRUE(value.InverseOf(source));
    EXPECT_EQ(RowsOf(source), (Rows{{1, 2}, {3, 4}}));
}

TEST(InverseOf, IsTheAdjointOverTheDeterminantToTheLastBit) {
    std::mt19937 random(3012);
    for (int round = 0; round < 60; ++round) {
        const std::size_t size = 1 + random() % 7;
        const Rows rows = RandomRows(random, size, size, false);
        Rows expected = AdjointPlainly(rows);
        for (auto& row : expected) {
            for (double& cell : row) cell = cell / DeterminantPlainly(rows);
        }
        Value value;
        ASSERT_TRUE(value.InverseOf(TableOf(rows)));
        EXPECT_TRUE(SameBits(RowsOf(value), expected));
    }
}

TEST(InverseOf, TimesTheTableIsTheUnitTable) {
    std::mt19937 random(3013);
    for (const std::size_t size : {1, 2, 3, 5, 8, 13, 40}) {
        const Rows rows = RegularRows(random, size);
        Value inverse;
        ASSERT_TRUE(inverse.InverseOf(TableOf(rows)));
        const Rows product = ProductOf(rows, RowsOf(inverse));
        for (std::size_t i = 0; i < size; ++i) {
            for (std::size_t j = 0; j < size; ++j) {
                EXPECT_NEAR(product[i][j], i == j ? 1.0 : 0.0, 1e-13);
            }
        }
    }
}

}  // namespace
}  // namespace orvane
