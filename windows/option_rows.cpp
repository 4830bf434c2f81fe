#include "windows/option_rows.h"

namespace orvane {

namespace {

void AppendHexByte(std::string& text, std::uint32_t value) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text += digits[value >> 4 & 0xF];
    text += digits[value & 0xF];
}

}  // namespace

std::string ColourCode(Colour colour) {
    std::string code;
    AppendHexByte(code, RedOf(colour));
    code += ' ';
    AppendHexByte(code, GreenOf(colour));
    code += ' ';
    AppendHexByte(code, BlueOf(colour));
    return code;
}

ColourRowLayout LayOutColourRow(int clientLeft, const ColourRowLayout::Area& button) {
    const int top = button.top + 2;
    const int bottom = button.bottom - 2;
    const int left = clientLeft + 16;
    const int right = button.left - 10;
    const int swatchLeft = (left + right) / 2 - 6;
    const int split = (swatchLeft + right) / 2;  // between the swatch and its code

    ColourRowLayout layout;
    layout.label = {left, top, swatchLeft, bottom};
    layout.swatch = {swatchLeft, top, split - 4, bottom};
    layout.code = {split + 4, top, right, bottom};
    layout.repainted = {clientLeft, top, button.left, bottom};
    return layout;
}

bool TextColourChoice::Choose(std::size_t row, Colour colour) {
    if (working[row] == colour) return false;
    working[row] = colour;
    return true;
}

bool TextColourChoice::Restore(Questions& questions) {
    if (!questions.Confirm(restoreColoursQuestion)) return false;
    working = defaultTextColours;
    return true;
}

std::optional<TextColours> TextColourChoice::Confirmed() const {
    if (working == start) return std::nullopt;
    return working;
}

std::string FineRowText(int row) {
    std::string text = std::to_string(row);
    if (row == 0) text += " - best";
    return text;
}

int FineRowOf(std::int32_t locusFine) {
    return locusFine >= 0 && locusFine < fineRowCount ? locusFine : noFineRow;
}

}  // namespace orvane
