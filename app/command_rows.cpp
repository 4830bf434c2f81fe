#include "app/command_rows.h"

#include <array>

#include "app/main_layout.h"
#include "windows/control_ids.h"

namespace orvane {

namespace {

using namespace ids::command;

constexpr std::array<const char*, menuLabelCount> titles = {"Options", "View", "General",
                                                            "Functions", "Help"};
constexpr const char* heights = "Calculation height";

constexpr CommandRow rows[] = {
    {0, nullptr, "Text colors", textColours, "text_colors"},
    {0, nullptr, "General options", generalOptions, "general_options"},
    {0, nullptr, "Black output looking", blackOutput, nullptr, MenuMark::check},
    {0, heights, "1/8", height1, nullptr, MenuMark::radio},
    {0, heights, "2/8", height2, nullptr, MenuMark::radio},
    {0, heights, "3/8", height3, nullptr, MenuMark::radio},
    {0, heights, "4/8", height4, nullptr, MenuMark::radio},
    {0, heights, "5/8", height5, nullptr, MenuMark::radio},
    {0, heights, "6/8", height6, nullptr, MenuMark::radio},
    {0, heights, "7/8", height7, nullptr, MenuMark::radio},
    {0, nullptr, "Always on top", alwaysOnTop, nullptr, MenuMark::check},
    {1, nullptr, "Locus", locus, "locus"},
    {2, nullptr, "Output keywords", 32852, "output_keywords"},
    {2, nullptr, "Operators", 32851, "operators"},
    {2, nullptr, "Numbers", 32850, "numbers"},
    {3, nullptr, "All functions", 32824, "function"},
    {3, nullptr, "String functions", 32825, "function_string"},
    {3, nullptr, "Bits functions", 32826, "function_bits"},
    {3, nullptr, "Logical functions", 32827, "function_logic"},
    {3, nullptr, "Condition functions", 32828, "function_condition"},
    {3, nullptr, "Normal functions", 32829, "function_normal"},
    {3, nullptr, "Statistics functions", 32830, "function_statistics"},
    {3, nullptr, "Point functions", 32831, "function_point"},
    {3, nullptr, "Vector and Matrix functions", 32832, "function_matrix"},
    {3, nullptr, "Definite integral functions", 32833, "function_integral"},
    {3, nullptr, "Series functions", 32834, "function_series"},
    {3, nullptr, "Product function", 32835, "function_product"},
    {3, nullptr, "Equation root functions", 32836, "function_root"},
    {3, nullptr, "Draw locus functions", 32837, "function_locus"},
    {3, nullptr, "Complex function", 32838, "function_complex"},
    {3, nullptr, "Operator functions", 32839, "function_operator"},
    {4, nullptr, "Help contents", helpContents, "help"},
    {4, nullptr, "All keywords", allKeywords, "all_keywords"},
    {4, nullptr, "Open samples", openSamples, "samples"},
    {4, nullptr, "Software news", softwareNews, "news"},
    {4, nullptr, "About", about, "about"},
};

}  // namespace

std::string_view PopupTitle(int popup) { return titles[popup]; }

std::span<const CommandRow> CommandRows() { return rows; }

}  // namespace orvane
