#pragma once

#include <span>
#include <string_view>

// The menus as a table: what each of the five popups offers, in order.

namespace orvane {

enum class MenuMark {
    none,   // a plain command
    check,  // on or off
    radio,  // one of the split heights
};

struct CommandRow {
    int popup;            // 0 to 4, the label of the menu strip
    const char* submenu;  // the submenu that holds the row; null: the popup itself
    const char* text;
    int id;
    const char* image;  // the name of its picture; null: none
    MenuMark mark = MenuMark::none;
};

std::string_view PopupTitle(int popup);
std::span<const CommandRow> CommandRows();

}  // namespace orvane
