#pragma once

#include <span>
#include <string_view>

// The pages of the help, as they stand below help/html when the tool is built.

namespace orvane::cli {

struct HelpPage {
    std::string_view path;                     // as in "function/bits.htm"
    std::span<const std::string_view> pieces;  // of its text, one behind the other
};

// In the order of their paths.
extern const std::span<const HelpPage> helpPages;

}  // namespace orvane::cli
