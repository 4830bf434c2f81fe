#include "tests/support/literal_passes.h"

#include <charconv>
#include <cstddef>
#include <optional>

#include "tests/support/literal_text.h"

namespace orvane::test {

using namespace plain;

namespace {

std::string Shortened(std::string_view piece) {
    while (!piece.empty() && piece.front() == ' ') piece.remove_prefix(1);
    while (!piece.empty() && piece.back() == ' ') piece.remove_suffix(1);
    if (piece.size() <= 30) return std::string(piece);
    return std::string(piece.substr(0, 27)) + "...";
}

// --- how numbers and points stand

std::string CheckNeighbourWords(std::string_view text, int number) {
    bool wordSeen = false;
    for (std::size_t at = BehindBlanks(text, 0); at < text.size(); at = BehindBlanks(text, at)) {
        if (!IsWord(text[at])) {
            wordSeen = false;
            ++at;
            continue;
        }
        const std::size_t end = BehindWord(text, at);
        if (wordSeen) {
            const std::string word(text.substr(at, end - at));
            return Message("C002-03:", word, "is used incorrect in", number);
        }
        wordSeen = true;
        at = end;
    }
    return {};
}

std::string PointMessage(std::string_view piece, int number) {
    return Message("C002-04: decimal point around", Shortened(piece), "is incorrect in", number);
}

std::string CheckPoints(std::string_view text, int number) {
    if (!text.empty() && text[0] == '.')
        return PointMessage(text.substr(0, text.find(' ')), number);
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '.') continue;
        const std::size_t nextBlank = text.find(' ', at);
        const std::size_t end = nextBlank == npos ? text.size() : nextBlank;
        const bool digits =
            IsDecimal(text[at - 1]) && at + 1 < text.size() && IsDecimal(text[at + 1]);
        if (!digits) {
            const std::size_t blank = text.rfind(' ', at);
            const std::size_t start = blank == npos ? 0 : blank + 1;
            return PointMessage(text.substr(start, end - start), number);
        }
        std::size_t first = at - 1;
        while (first > 0 && IsWord(text[first - 1])) --first;
        if (IsLetter(text[first])) return PointMessage(text.substr(first, end - first), number);
    }
    return {};
}

bool IsSpelledAsNumber(std::string_view run) {
    struct Form {
        std::string_view prefix, digits;
    };
    constexpr Form forms[] = {{"0b", "01"},
                              {"0q", "0123"},
                              {"0o", "01234567"},
                              {"0u", "0123456789"},
                              {"0h", "0123456789abcdefABCDEF"},
                              {"0x", "0123456789abcdefABCDEF"}};
    for (const auto& [prefix, digits] : forms) {
        if (run.substr(0, 2) != prefix) continue;
        return run.size() >= 3 && run.substr(2).find_first_not_of(digits) == npos;
    }
    const bool onlyDigits = run.find_first_not_of("0123456789.") == npos;
    return onlyDigits && run.find('.') == run.rfind('.');
}

std::string CheckShapes(std::string_view text, int number) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (!IsWord(text[at])) {
            ++at;
            continue;
        }
        const std::size_t end = BehindNumber(text, at);
        const std::string_view run = text.substr(at, end - at);
        if (IsDecimal(run[0]) && !IsSpelledAsNumber(run)) {
            return Message("C002-06: the number", std::string(run), "is unrecognized in", number);
        }
        at = end;
    }
    return {};
}

// --- names

std::string FixedText(double value) {
    char text[64];
    const auto written =
        std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 32);
    std::string fixed(text, written.ptr);
    fixed.erase(fixed.find_last_not_of('0') + 1);
    if (fixed.back() == '.') fixed.pop_back();
    return fixed;
}

std::optional<double> ConstantOf(std::string_view word) {
    if (word.size() == 1 && word[0] == 'e') return 2.718281828459045;
    if (word.size() == 2 && word == "pi") return 3.141592653589793;
    if (word.size() == 4 && word == "true") return 1.0;
    if (word.size() == 5 && word.substr(0, 2) == "fa") return 0.0;
    return {};
}

}  // namespace

std::string CheckNumbersPlainly(std::string_view text, int number) {
    if (text.find('"') != npos) {
        return "C002-01: string can not be used out of string function in sentence " +
               std::to_string(number) + ".";
    }
    std::string error = CheckNeighbourWords(text, number);
    if (error.empty()) error = CheckPoints(text, number);
    if (error.empty()) error = CheckShapes(text, number);
    return error;
}

void CollapseSignsPlainly(std::string& text) {
    std::size_t first = text.find_first_of("+-");
    while (first != npos) {
        std::size_t at = first;
        int minusCount = 0;
        for (; at < text.size() && IsOneOf(text[at], "+- "); ++at) {
            if (text[at] == '-') ++minusCount;
            text[at] = ' ';
        }
        text[first] = minusCount % 2 == 1 ? '-' : '+';
        first = text.find_first_of("+-", at);
    }
}

std::string CheckSymbolsPlainly(std::string_view text, int number) {
    for (const char c : text) {
        if (IsWord(c) || IsOneOf(c, " +-(),.")) continue;
        return Message("C002-02: the symbol", std::string(1, c), "is unrecognized in", number);
    }
    constexpr std::string_view symbols = "()+-*/^,";
    std::size_t current = text.find_first_of(symbols);
    while (current != npos) {
        const std::size_t next = BehindBlanks(text, current + 1);
        std::string quoted;
        if (next == text.size()) {
            if (text[current] == ')') return {};
            quoted = std::string("last ") + text[current];
        } else if (IsOneOf(text[current], "(*+,-/^") && IsOneOf(text[next], ")*,/^")) {
            quoted = text.substr(current, next + 1 - current);
        }
        if (!quoted.empty()) return Message("C002-05: symbol", quoted, "is incorrect in", number);
        current = IsOneOf(text[next], symbols) ? next : text.find_first_of(symbols, next + 1);
    }
    return {};
}

void RemoveDoubledBracketsPlainly(std::string& text) {
    std::size_t outer = text.find('(');
    while (outer != npos) {
        const std::size_t inner = BehindBlanks(text, outer + 1);
        if (inner == text.size() || text[inner] != '(') {
            outer = text.find('(', inner);
            continue;
        }
        const std::size_t innerClose = ClosingOf(text, inner);
        if (BehindBlanks(text, innerClose + 1) == ClosingOf(text, outer)) {
            text[inner] = ' ';
            text[innerClose] = ' ';
        } else {
            outer = inner;
        }
    }
}

bool SubstituteOncePlainly(std::string& text, const std::vector<PlainDefine>& defines) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] == '"') {
            at = text.find('"', at + 1) + 1;
        } else if (IsDecimal(text[at])) {
            at = BehindNumber(text, at);
        } else if (IsLetter(text[at])) {
            const std::size_t end = BehindWord(text, at);
            for (const PlainDefine& define : defines) {
                if (define.name != text.substr(at, end - at)) continue;
                text.replace(at, end - at, define.text);
                return true;
            }
            at = end;
        } else {
            ++at;
        }
    }
    return false;
}

bool FoldOncePlainly(std::string& text) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (!IsWord(text[at])) {
            ++at;
            continue;
        }
        const std::size_t end = BehindWord(text, at);
        const std::string word = text.substr(at, end - at);
        if (const auto value = ConstantOf(word); value && IsLetter(word[0])) {
            text.replace(at, end - at, FixedText(*value));
            return true;
        }
        at = end;
    }
    return false;
}

}  // namespace orvane::test
