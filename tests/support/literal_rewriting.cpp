#include "tests/support/literal_passes.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "tests/support/literal_text.h"

namespace orvane::test {

using namespace plain;

namespace {

struct Operand {
    std::size_t start = 0;
    std::size_t end = 0;
};

struct Operator {
    std::string_view text;
    std::string_view function;
    std::string_view extra = {};
};

std::optional<Operand> LeftOperand(std::string_view text, std::size_t position,
                                   std::string_view operatorText, int number, std::string& error) {
    const std::size_t end = BeforeBlanks(text, position);
    if (end == 0 || !(text[end - 1] == ')' || IsWord(text[end - 1]))) {
        error =
            Message("C002-09: operator", std::string(operatorText), "is used incorrect in", number);
        return {};
    }
    std::size_t start = end - 1;
    if (text[start] == ')') {
        start = OpeningOf(text, start);
        std::size_t word = BeforeBlanks(text, start);
        if (word > 0 && IsWord(text[word - 1])) {
            while (word > 0 && IsWord(text[word - 1])) --word;
            start = word;
        }
    } else {
        while (start > 0 && (IsWord(text[start - 1]) || text[start - 1] == '.')) --start;
    }
    return Operand{start, end};
}

std::optional<Operand> RightOperand(std::string_view text, std::size_t position,
                                    std::string_view operatorText, int number, std::string& error) {
    const std::size_t start = BehindBlanks(text, position + operatorText.size());
    std::size_t at = start;
    while (at < text.size() && IsOneOf(text[at], "+- ")) ++at;
    if (at == text.size() || !(text[at] == '(' || IsWord(text[at]))) {
        error =
            Message("C002-10: operator", std::string(operatorText), "is used incorrect in", number);
        return {};
    }
    if (text[at] == '(') return Operand{start, ClosingOf(text, at) + 1};
    at = BehindNumber(text, at);
    const std::size_t behind = BehindBlanks(text, at);
    if (IsLetter(text[start]) && behind < text.size() && text[behind] == '(') {
        at = ClosingOf(text, behind) + 1;
    }
    return Operand{start, at};
}

bool RewriteBinary(std::string& text, std::size_t position, const Operator& found, int number,
                   std::string& error) {
    const auto left = LeftOperand(text, position, found.text, number, error);
    if (!left) return false;
    const auto right = RightOperand(text, position, found.text, number, error);
    if (!right) return false;
    std::string call(found.function);
    call += '(' + text.substr(left->start, left->end - left->start) + ',';
    call += text.substr(right->start, right->end - right->start);
    call.append(found.extra) += ')';
    text.replace(left->start, right->end - left->start, call);
    return true;
}

bool RewriteBars(std::string& text, int number, std::string& error) {
    const std::size_t first = text.find('|');
    if (first == npos) return false;
    const std::size_t second = text.find('|', first + 1);
    int depth = 0;
    bool matched = second != npos;
    for (std::size_t at = first; matched && at < second; ++at) {
        if (text[at] == '(') ++depth;
        if (text[at] == ')') --depth;
        matched = depth >= 0;
    }
    if (!matched) {
        error = Message("C002-11: operator", "|", "is used incorrect in", number);
        return false;
    }
    const std::string inner = text.substr(first + 1, second - first - 1);
    text.replace(first, second - first + 1, "abs(" + inner + ")");
    return true;
}

bool RewriteFactorial(std::string& text, int number, std::string& error) {
    const std::size_t position = text.find('!');
    if (position == npos) return false;
    const auto operand = LeftOperand(text, position, "!", number, error);
    if (!operand) return false;
    const std::string inner = text.substr(operand->start, operand->end - operand->start);
    text[position] = ' ';
    text.replace(operand->start, position - operand->start, "factorial(" + inner + ")");
    return true;
}

template <std::size_t count>
bool RewriteFirstOf(const Operator (&operators)[count], std::string& text, int number,
                    std::string& error) {
    std::size_t lowest = npos;
    for (const Operator& row : operators) lowest = std::min(lowest, text.find(row.text));
    if (lowest == npos) return false;
    for (const Operator& row : operators) {
        if (text.compare(lowest, row.text.size(), row.text) == 0) {
            return RewriteBinary(text, lowest, row, number, error);
        }
    }
    return false;
}

bool RewritePower(std::string& text, int number, std::string& error) {
    constexpr Operator operators[] = {{"^", "power"}};
    return RewriteFirstOf(operators, text, number, error);
}

bool RewriteShift(std::string& text, int number, std::string& error) {
    constexpr Operator operators[] = {{"<<", "lsh", ",0"}, {">>", "rsh", ",0"}};
    return RewriteFirstOf(operators, text, number, error);
}

bool RewriteProduct(std::string& text, int number, std::string& error) {
    constexpr Operator operators[] = {{"*", "times"}, {"/", "divide"}, {"%", "reminder"}};
    return RewriteFirstOf(operators, text, number, error);
}

bool RewriteComparison(std::string& text, int number, std::string& error) {
    constexpr Operator operators[] = {{">=", "great_equals"}, {"<=", "less_equals"},
                                      {"==", "equals"},       {"<>", "not_equals"},
                                      {">", "great_than"},    {"<", "less_than"}};
    return RewriteFirstOf(operators, text, number, error);
}

bool RewriteSum(std::string& text, int number, std::string& error) {
    std::size_t at = text.find_first_of("+-");
    if (at == npos) return false;
    if (at == 0) at = 1;
    for (; at < text.size(); ++at) {
        if (text[at] != '+' && text[at] != '-') continue;
        const std::size_t before = BeforeBlanks(text, at);
        if (before == 0 || !(text[before - 1] == ')' || IsWord(text[before - 1]))) continue;
        constexpr Operator plus = {"+", "plus"}, minus = {"-", "minus"};
        return RewriteBinary(text, at, text[at] == '+' ? plus : minus, number, error);
    }
    return false;
}

bool RewriteUnaryPlus(std::string& text, int, std::string&) {
    const std::size_t position = text.find('+');
    if (position == npos) return false;
    text[position] = ' ';
    return true;
}

bool RewriteUnaryMinus(std::string& text, int number, std::string& error) {
    const std::size_t position = text.find('-');
    if (position == npos) return false;
    const auto operand = RightOperand(text, position, "-", number, error);
    if (!operand) return false;
    const std::string inner = text.substr(operand->start, operand->end - operand->start);
    text.replace(position, operand->end - position, "neg(" + inner + ")");
    return true;
}

using RewriteStep = bool (*)(std::string& text, int number, std::string& error);
constexpr RewriteStep rewriteSteps[] = {RewriteBars,  RewriteFactorial, RewritePower,
                                        RewriteShift, RewriteProduct,   RewriteComparison,
                                        RewriteSum,   RewriteUnaryPlus, RewriteUnaryMinus};

}  // namespace

std::string RewriteOperatorsPlainly(std::string& text, int number) {
    std::string error;
    for (const RewriteStep step : rewriteSteps) {
        while (error.empty() && step(text, number, error)) {
        }
        if (!error.empty()) break;
    }
    return error;
}

}  // namespace orvane::test
