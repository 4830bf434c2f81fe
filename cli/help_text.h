#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The pages of the help as text for a terminal: paragraphs wrapped at 80 columns, tables in
// columns, fixed text indented as it stands.

namespace orvane::cli {

inline constexpr int helpColumns = 80;

struct HelpTopic {
    std::string_view path;  // with ".htm"
    std::string title;
};

// All pages in the order of their paths.
std::vector<HelpTopic> HelpTopics();

// What the help tells about a keyword; nothing for any other word.
std::optional<std::string> HelpForKeyword(std::string_view word);

// A whole page by its path, with or without ".htm"; nothing where there is no such page.
std::optional<std::string> HelpForPage(std::string_view path);

// The keywords and paths of pages that the user may have meant, the nearest first.
std::vector<std::string> NamesNear(std::string_view word);

}  // namespace orvane::cli
