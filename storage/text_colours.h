#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// The seven colours of the formula editor, one for each kind of piece, in the order in which they
// are stored and offered.

namespace orvane {

enum class TextClass : std::int32_t {
    headerKeyword = 0,
    commonKeyword = 1,
    normalText = 2,
    string = 3,
    number = 4,
    symbol = 5,
    comment = 6,
};
inline constexpr std::size_t textClassCount = 7;

// Red in the low byte, then green, then blue.
using Colour = std::uint32_t;

constexpr Colour ColourFrom(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    return red | green << 8 | blue << 16;
}
constexpr std::uint32_t RedOf(Colour colour) { return colour & 0xFF; }
constexpr std::uint32_t GreenOf(Colour colour) { return colour >> 8 & 0xFF; }
constexpr std::uint32_t BlueOf(Colour colour) { return colour >> 16 & 0xFF; }

using TextColours = std::array<Colour, textClassCount>;

inline constexpr TextColours defaultTextColours = {
    ColourFrom(0, 128, 0),   ColourFrom(255, 0, 0), ColourFrom(0, 0, 0),      ColourFrom(0, 0, 0),
    ColourFrom(128, 0, 128), ColourFrom(0, 0, 255), ColourFrom(128, 128, 128)};

// What the kinds are called where people choose their colours.
inline constexpr std::array<const char*, textClassCount> textClassNames = {
    "Header keyword", "Common keyword", "Normal text", "String", "Number", "Symbol", "Comment"};

}  // namespace orvane
