#include "app/command_rows.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "app/main_layout.h"

namespace orvane {
namespace {

struct MenuRow {
    const char* popup;
    const char* submenu;
    const char* text;
    int id;
};
constexpr MenuRow menuRows[] = {
    {"Options", "", "Text colors", 32786},
    {"Options", "", "General options", 32953},
    {"Options", "", "Black output looking", 32805},
    {"Options", "Calculation height", "1/8", 32807},
    {"Options", "Calculation height", "2/8", 32809},
    {"Options", "Calculation height", "3/8", 32808},
    {"Options", "Calculation height", "4/8", 32810},
    {"Options", "Calculation height", "5/8", 32811},
    {"Options", "Calculation height", "6/8", 32806},
    {"Options", "Calculation height", "7/8", 32812},
    {"Options", "", "Always on top", 32814},
    {"View", "", "Locus", 32816},
    {"General", "", "Output keywords", 32852},
    {"General", "", "Operators", 32851},
    {"General", "", "Numbers", 32850},
    {"Functions", "", "All functions", 32824},
    {"Functions", "", "String functions", 32825},
    {"Functions", "", "Bits functions", 32826},
    {"Functions", "", "Logical functions", 32827},
    {"Functions", "", "Condition functions", 32828},
    {"Functions", "", "Normal functions", 32829},
    {"Functions", "", "Statistics functions", 32830},
    {"Functions", "", "Point functions", 32831},
    {"Functions", "", "Vector and Matrix functions", 32832},
    {"Functions", "", "Definite integral functions", 32833},
    {"Functions", "", "Series functions", 32834},
    {"Functions", "", "Product function", 32835},
    {"Functions", "", "Equation root functions", 32836},
    {"Functions", "", "Draw locus functions", 32837},
    {"Functions", "", "Complex function", 32838},
    {"Functions", "", "Operator functions", 32839},
    {"Help", "", "Help contents", 32781},
    {"Help", "", "All keywords", 32954},
    {"Help", "", "Open samples", 32813},
    {"Help", "", "Software news", 32950},
    {"Help", "", "About", 32783},
};

TEST(CommandRows, HoldEveryMenuItemInOrder) {
    const auto rows = CommandRows();
    ASSERT_EQ(rows.size(), std::size(menuRows));
    for (std::size_t at = 0; at < rows.size(); ++at) {
        SCOPED_TRACE(menuRows[at].text);
        EXPECT_EQ(PopupTitle(rows[at].popup), menuRows[at].popup);
        EXPECT_EQ(std::string(rows[at].submenu == nullptr ? "" : rows[at].submenu),
                  menuRows[at].submenu);
        EXPECT_STREQ(rows[at].text, menuRows[at].text);
        EXPECT_EQ(rows[at].id, menuRows[at].id);
    }
}

TEST(CommandRows, HaveNoTestItem) {
    for (const CommandRow& row : CommandRows()) EXPECT_NE(row.id, 32951);
}

TEST(CommandRows, MarkWhatCanBeOnOrOff) {
    std::set<int> checks;
    std::set<int> radios;
    for (const CommandRow& row : CommandRows()) {
        if (row.mark == MenuMark::check) checks.insert(row.id);
        if (row.mark == MenuMark::radio) radios.insert(row.id);
    }
    EXPECT_EQ(checks, (std::set<int>{32805, 32814}));
    EXPECT_EQ(radios, (std::set<int>{32806, 32807, 32808, 32809, 32810, 32811, 32812}));
}

}  // namespace
}  // namespace orvane
