#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Character classes and scanners over sheet text. A pass over a whole sentence that meets brackets
// inside brackets notes their partners in one walk instead of asking for each of them. Characters
// are plain 8-bit units; no locale is asked. A position is an offset into the text that was given;
// a scan that finds nothing answers the text's size, unless it says otherwise.

namespace orvane {

// A set of characters that is asked once for each character of a text.
class CharacterSet {
public:
    constexpr explicit CharacterSet(std::string_view characters) {
        for (const char c : characters) members[static_cast<unsigned char>(c)] = true;
    }
    constexpr bool Has(char c) const { return members[static_cast<unsigned char>(c)]; }
    // The first member at or behind `from`; the text's size when there is none.
    constexpr std::size_t Find(std::string_view text, std::size_t from) const {
        while (from < text.size() && !Has(text[from])) ++from;
        return from;
    }

private:
    bool members[256] = {};
};

constexpr bool IsWordStart(char c) {
    return c == '_' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

inline constexpr CharacterSet wordCharacters(
    "_0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");

// A word is a maximal run of these. One that starts with a digit is a number-like word.
constexpr bool IsWordChar(char c) { return wordCharacters.Has(c); }

// Blanks only.
constexpr std::size_t SkipSpaces(std::string_view text, std::size_t from) {
    while (from < text.size() && text[from] == ' ') ++from;
    return from;
}

inline constexpr CharacterSet whiteCharacters(" \t\n");

// Blanks, tabs and line feeds.
constexpr std::size_t SkipWhite(std::string_view text, std::size_t from) {
    while (from < text.size() && whiteCharacters.Has(text[from])) ++from;
    return from;
}

// The first position at or behind `from` that is no word character.
constexpr std::size_t FindWordEnd(std::string_view text, std::size_t from) {
    while (from < text.size() && IsWordChar(text[from])) ++from;
    return from;
}

// The first position at or behind `from` that is neither a word character nor a point.
constexpr std::size_t FindNumberEnd(std::string_view text, std::size_t from) {
    while (from < text.size() && (IsWordChar(text[from]) || text[from] == '.')) ++from;
    return from;
}

// The position behind the string that opens with the `"` at `quote`; the text's size when the
// string is not closed. There is no escape of any kind.
std::size_t SkipString(std::string_view text, std::size_t quote);

// The first word outside strings that `isWanted(word)` takes, as a view into the text; empty when
// there is none. Words that start with a digit are asked about as well.
template <typename IsWanted>
std::string_view FindWord(std::string_view text, IsWanted isWanted) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (IsWordChar(text[at])) {
            const std::size_t end = FindWordEnd(text, at);
            const std::string_view word = text.substr(at, end - at);
            if (isWanted(word)) return word;
            at = end;
        } else {
            at = text[at] == '"' ? SkipString(text, at) : at + 1;
        }
    }
    return {};
}

// The `)` that balances the `(` at `open`.
std::size_t FindClosingBracket(std::string_view text, std::size_t open);

// The `(` that balances the `)` at `close`, looking no further back than `start`; `start` when
// there is none.
std::size_t FindOpeningBracket(std::string_view text, std::size_t close, std::size_t start);

// The first `,` at or behind `from` with as many `(` as `)` between. A `)` does not stop the scan:
// the caller's text ends at the closing bracket.
std::size_t FindTopLevelComma(std::string_view text, std::size_t from);

// The length of every piece of a sheet that a message shows.
inline constexpr std::size_t messageLimit = 30;

// The piece without the blanks at its ends. A piece longer than `limit` keeps `limit` - 3
// characters (`limit` itself when that is under 10) and gets "..." behind it.
std::string ShortenForMessage(std::string_view piece, std::size_t limit = messageLimit);

}  // namespace orvane
