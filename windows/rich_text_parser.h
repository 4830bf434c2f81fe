#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The mark-up of a rich text label as a flat list of things to place: runs of text, line ends,
// rules, pictures and spaces, each with the look and the alignment that hold there. Nothing is
// measured here. The time grows with the length of the text, whatever is in it, and no text is
// refused: tags and attributes that aren't known are skipped without a word.

namespace orvane {

// Red in the low byte, then green, then blue, or one of the two words below.
using LabelColour = std::int32_t;
inline constexpr LabelColour noColour = -1;            // transparent
inline constexpr LabelColour buttonShadowColour = -2;  // whatever the window's look has for it

struct LabelFont {
    std::string face = "Arial";  // up to 259 characters
    std::int32_t size = 12;      // pixels, 1 to 1999
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeThrough = false;
    LabelColour colour = 0;
    LabelColour background = noColour;

    bool operator==(const LabelFont&) const = default;
};

enum class HorizontalAlign : std::int32_t { left = 0, centre = 1, right = 2 };
enum class VerticalAlign : std::int32_t { top = 0, middle = 1, bottom = 2 };

struct LabelAlign {
    HorizontalAlign horizontal = HorizontalAlign::centre;
    VerticalAlign vertical = VerticalAlign::middle;

    bool operator==(const LabelAlign&) const = default;
};

enum class LabelItemKind : std::int32_t {
    run,
    lineEnd,
    rule,
    picture,
    verticalSpace,    // ends the line first, if it holds anything
    horizontalSpace,  // moves the line's position to the right
};

inline constexpr std::size_t noLink = static_cast<std::size_t>(-1);

struct LabelItem {
    LabelItemKind kind = LabelItemKind::run;
    LabelAlign align;
    std::size_t font = 0;           // index into the document's fonts
    std::size_t hotFont = 0;        // of a run with a link, while the pointer is over it
    std::size_t link = noLink;      // runs and pictures: index into the document's targets
    std::string text;               // runs: never empty, without a line feed
    std::int32_t amount = 0;        // spaces: pixels; pictures: the number of the bitmap
    std::int32_t width = 0;         // rules: pixels, or less than the area when fromArea is set
    std::int32_t height = 0;        // rules: pixels
    std::int32_t border = 0;        // pictures: pixels on each side
    LabelColour colour = noColour;  // of a rule, or of a picture's border
    HorizontalAlign ruleAlign = HorizontalAlign::centre;
    bool fromArea = false;  // rules: the width is the area's width less `width`
};

struct LabelDocument {
    std::vector<LabelItem> items;
    std::vector<LabelFont> fonts;      // the first is the start font
    std::vector<std::string> targets;  // in order of appearance; shared by the pieces of a link
};

// A text that ends inside a tag leaves its last line without an end.
LabelDocument ParseRichText(std::string_view text);

}  // namespace orvane
