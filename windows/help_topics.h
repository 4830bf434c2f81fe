#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "functions/keyword_table.h"

// Which help page belongs to what. A topic is the path of a page below the help's html folder, with
// forward slashes, and "#" with the name of a place on that page where one is meant.

namespace orvane {

namespace topics {
inline constexpr std::string_view contents = "about/about.htm";
inline constexpr std::string_view textColours = "options/textcolor.htm";
inline constexpr std::string_view generalOptions = "options/genoption.htm";
inline constexpr std::string_view allKeywords = "tools/allkeywords.htm";
inline constexpr std::string_view locus = "function/variable/locus.htm";
inline constexpr std::string_view fastHelp = "tools/fasthelp.htm";  // for a word that is no keyword
}  // namespace topics

// Shown one after another, ahead of the page asked for, at the first help request of a run.
inline constexpr std::array<std::string_view, 6> openingTopics = {
    "sentence/formula/outputkey.htm",       "function/bits.htm",
    "function/variable/locus.htm",          "tools/fasthelp.htm",
    "function/variable/Integral/curve.htm", "options/textcolor.htm"};

// The page of a command of the menus General and Functions; none for any other number.
std::optional<std::string_view> TopicForCommand(int command);

// The keyword's page as it stands, without a place on it.
std::string TopicForKeyword(const KeywordEntry& entry);

// The place of this word on its page, or the page that tells about the help key when the word is
// no keyword. Names are compared exactly.
std::string TopicForFastHelp(std::string_view word);

}  // namespace orvane
