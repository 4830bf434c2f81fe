#include "core/text_scan.h"

#include <algorithm>

namespace orvane {

std::size_t SkipString(std::string_view text, std::size_t quote) {
    const std::size_t closing = text.find('"', quote + 1);
    return closing == std::string_view::npos ? text.size() : closing + 1;
}

std::size_t FindClosingBracket(std::string_view text, std::size_t open) {
    std::size_t depth = 0;
    for (std::size_t at = open; at < text.size(); ++at) {
        if (text[at] == '(') ++depth;
        if (text[at] == ')' && --depth == 0) return at;
    }
    return text.size();
}

std::size_t FindOpeningBracket(std::string_view text, std::size_t close, std::size_t start) {
    std::size_t depth = 0;
    for (std::size_t at = close + 1; at-- > start;) {
        if (text[at] == ')') ++depth;
        if (text[at] == '(' && --depth == 0) return at;
    }
    return start;
}

std::size_t FindTopLevelComma(std::string_view text, std::size_t from) {
    std::ptrdiff_t depth = 0;
    for (std::size_t at = from; at < text.size(); ++at) {
        if (text[at] == '(') ++depth;
        if (text[at] == ')') --depth;
        if (text[at] == ',' && depth == 0) return at;
    }
    return text.size();
}

std::string ShortenForMessage(std::string_view piece, std::size_t limit) {
    const std::size_t first = piece.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    piece = piece.substr(first, piece.find_last_not_of(' ') - first + 1);
    if (piece.size() <= limit) return std::string(piece);
    const std::size_t kept = limit < 10 ? limit : limit - 3;
    return std::string(piece.substr(0, kept)) + "...";
}

}  // namespace orvane
