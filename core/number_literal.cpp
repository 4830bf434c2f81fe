#include "core/number_literal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>
#include <system_error>

#include "core/text_scan.h"

namespace orvane {

namespace {

constexpr int mostDecimals = 4096;
constexpr int decimalsWhenNegative = 6;
constexpr std::size_t longestInteger = 309;

struct BaseForm {
    char letter;
    unsigned base;
};

constexpr std::array<BaseForm, 6> baseForms = {
    {{'b', 2}, {'q', 4}, {'o', 8}, {'u', 10}, {'h', 16}, {'x', 16}}};

// The form that a run such as "0x1F" announces with its first two characters.
const BaseForm* FindBaseForm(std::string_view run) {
    if (run.size() < 2 || run[0] != '0') return nullptr;
    const auto found = std::find_if(baseForms.begin(), baseForms.end(),
                                    [&](const BaseForm& form) { return form.letter == run[1]; });
    return found == baseForms.end() ? nullptr : &*found;
}

unsigned DigitValue(char c) {
    if (IsDigit(c)) return static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a') + 10;
    if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A') + 10;
    return std::numeric_limits<unsigned>::max();
}

bool HasOnlyDigits(std::string_view digits, unsigned base) {
    return std::all_of(digits.begin(), digits.end(), [&](char c) { return DigitValue(c) < base; });
}

double ReadSaturated(std::string_view digits, unsigned base) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t value = 0;
    for (const char c : digits) value = std::min(most, value * base + DigitValue(c));
    return static_cast<double>(value);
}

bool IsDecimalForm(std::string_view run) {
    int points = 0;
    for (const char c : run) {
        if (c == '.') ++points;
        if (points > 1 || (!IsDigit(c) && c != '.')) return false;
    }
    return true;
}

// A double holds every whole number of that many digits, and every power of ten that goes with it.
constexpr std::size_t exactDigits = 15;
constexpr double powersOfTen[exactDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// The value of a run of digits with at most one point, for nearly all that people write: both
// parts of the quotient are exact, so it is rounded once, as from_chars rounds. False for any other
// run.
bool ReadShortDecimal(std::string_view run, double& value) {
    if (run.size() > exactDigits) return false;
    std::int64_t digits = 0;
    std::size_t point = run.size();
    for (std::size_t at = 0; at < run.size(); ++at) {
        if (IsDigit(run[at])) {
            digits = digits * 10 + (run[at] - '0');
        } else if (run[at] == '.' && point == run.size()) {
            point = at;
        } else {
            return false;
        }
    }
    value = static_cast<double>(digits);
    if (point < run.size()) value /= powersOfTen[run.size() - point - 1];
    return true;
}

// `run` holds digits and at most one point, and starts with a digit.
double ReadDecimal(std::string_view run) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(run.data(), run.data() + run.size(), value);
    if (error != std::errc::result_out_of_range) return value;
    // Nothing but the integer part can overflow; without one the number is too small for a double.
    const bool large =
        run.substr(0, run.find('.')).find_first_not_of('0') != std::string_view::npos;
    return large ? std::numeric_limits<double>::infinity() : 0.0;
}

// The value of a run that starts with a digit and ends where neither word nor point goes on.
std::optional<double> ReadRun(std::string_view run) {
    double value = 0.0;
    if (ReadShortDecimal(run, value)) return value;
    const BaseForm* form = FindBaseForm(run);
    if (form != nullptr && run.size() >= 3 && run.find('.') == std::string_view::npos) {
        const std::string_view digits = run.substr(2);
        if (!HasOnlyDigits(digits, form->base)) return std::nullopt;
        return ReadSaturated(digits, form->base);
    }
    if (!IsDecimalForm(run)) return std::nullopt;
    return ReadDecimal(run);
}

// Gives the count of characters written.
std::size_t WriteFixed(std::span<char> room, double value, int decimals) {
    const auto written = std::to_chars(room.data(), room.data() + room.size(), value,
                                       std::chars_format::fixed, decimals);
    return static_cast<std::size_t>(written.ptr - room.data());
}

// A whole number, not 0, of no more digits than a double holds: nothing is left behind its point
// when the zeros go, and with no point they go from the number itself.
std::string FormatWhole(std::int64_t number, bool hasPoint, bool showPlus) {
    std::array<char, 24> room;
    char* const digits = room.data() + 1;
    char* end = std::to_chars(digits, room.data() + room.size(), number).ptr;
    while (!hasPoint && end[-1] == '0') --end;
    room.front() = '+';
    return std::string(showPlus && number > 0 ? room.data() : digits, end);
}

}  // namespace

std::optional<double> ParseNumberLiteral(std::string_view text) {
    double shortValue = 0.0;
    const bool hasDigit = !text.empty() && IsDigit(text.front());
    if (hasDigit && ReadShortDecimal(text, shortValue)) return shortValue;

    const std::size_t signsEnd = std::min(text.find_first_not_of("+- "), text.size());
    if (signsEnd == text.size() || !IsDigit(text[signsEnd])) return std::nullopt;
    const auto minusCount = std::count(text.begin(), text.begin() + signsEnd, '-');

    const std::size_t runEnd = FindNumberEnd(text, signsEnd);
    if (SkipSpaces(text, runEnd) != text.size()) return std::nullopt;
    const std::optional<double> value = ReadRun(text.substr(signsEnd, runEnd - signsEnd));
    if (!value) return std::nullopt;
    return minusCount % 2 != 0 ? -*value : *value;
}

bool IsNumberShape(std::string_view run) {
    if (run.empty()) return false;
    if (const BaseForm* form = FindBaseForm(run)) {
        return run.size() >= 3 && HasOnlyDigits(run.substr(2), form->base);
    }
    return IsDecimalForm(run);
}

std::string FormatShortest(double value) {
    if (!std::isfinite(value)) return FormatFixed(value, 0, false);
    std::array<char, 32> digits;
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr};
}

std::string FormatFixed(double value, int decimals, bool showPlus) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : showPlus ? "+inf" : "inf";
    if (decimals < 0) decimals = decimalsWhenNegative;
    decimals = std::min(decimals, mostDecimals);

    std::string text;
    if (showPlus && !std::signbit(value)) text.push_back('+');
    // Nearly every number fits here; only one with very many decimals needs more.
    std::array<char, 512> digits;
    const std::size_t longest = longestInteger + static_cast<std::size_t>(decimals) + 3;
    if (longest <= digits.size()) {
        text.append(digits.data(), WriteFixed(digits, value, decimals));
    } else {
        const std::size_t sign = text.size();
        text.resize(sign + longest);
        text.resize(sign + WriteFixed(std::span(text).subspan(sign), value, decimals));
    }
    return text;
}

std::string FormatStripped(double value, int decimals, bool showPlus) {
    constexpr double largestWhole = 1e15;
    if (std::abs(value) < largestWhole && value == std::trunc(value) && value != 0.0) {
        return FormatWhole(static_cast<std::int64_t>(value), decimals != 0, showPlus);
    }
    std::string text = FormatFixed(value, decimals, showPlus);
    while (!text.empty() && text.back() == '0') text.pop_back();
    if (!text.empty() && text.back() == '.') text.pop_back();
    return text;
}

std::string FormatFull(double value) { return FormatStripped(value, 32, true); }

std::optional<std::string> FormatForSentence(double value) {
    if (!std::isfinite(value)) return std::nullopt;
    return FormatStripped(value, 32, false);
}

}  // namespace orvane
