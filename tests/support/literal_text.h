#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// What the plain restatements of the passes share among themselves.

namespace orvane::test::plain {

inline constexpr std::size_t npos = std::string::npos;

inline bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
inline bool IsDecimal(char c) { return c >= '0' && c <= '9'; }
inline bool IsWord(char c) { return IsLetter(c) || IsDecimal(c); }
inline bool IsOneOf(char c, std::string_view set) { return set.find(c) != npos; }

inline std::size_t BehindBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && text[at] == ' ') ++at;
    return at;
}

// Steps back until the character in front of the position is no blank.
inline std::size_t BeforeBlanks(std::string_view text, std::size_t at) {
    while (at > 0 && text[at - 1] == ' ') --at;
    return at;
}

inline std::size_t BehindWord(std::string_view text, std::size_t at) {
    while (at < text.size() && IsWord(text[at])) ++at;
    return at;
}

inline std::size_t BehindNumber(std::string_view text, std::size_t at) {
    while (at < text.size() && (IsWord(text[at]) || text[at] == '.')) ++at;
    return at;
}

inline std::size_t ClosingOf(std::string_view text, std::size_t open) {
    int opened = 0, closed = 0;
    for (std::size_t at = open; at < text.size(); ++at) {
        if (text[at] == '(') ++opened;
        if (text[at] == ')') ++closed;
        if (opened == closed) return at;
    }
    return text.size();
}

inline std::size_t OpeningOf(std::string_view text, std::size_t close) {
    int opened = 0, closed = 0;
    for (std::size_t at = close + 1; at > 0; --at) {
        if (text[at - 1] == '(') ++opened;
        if (text[at - 1] == ')') ++closed;
        if (opened == closed) return at - 1;
    }
    return 0;
}

inline std::string Message(const std::string& code, const std::string& quoted,
                           const std::string& words, int number) {
    return code + " \"" + quoted + "\" " + words + " sentence " + std::to_string(number) + ".";
}

}  // namespace orvane::test::plain
