#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/number_literal.h"
#include "fuzz/fuzzed_bytes.h"
#include "output/base_text.h"
#include "output/line_layout.h"
#include "output/number_text.h"

// Numbers to text and back: of a number by its bits, and of a text that may be a literal.

namespace orvane::fuzz {

namespace {

bool IsSame(double left, double right) {
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

std::string WithoutPlus(std::string_view text) {
    return std::string(text.starts_with('+') ? text.substr(1) : text);
}

// No form that is fixed has an exponent, so that each one is a literal again.
double ReadBack(const std::string& text) {
    const std::optional<double> number = ParseNumberLiteral(text);
    Require(number.has_value(), "a written number is a literal");
    return *number;
}

void CheckSentenceForm(double number) {
    const std::optional<std::string> text = FormatForSentence(number);
    Require(text.has_value() == std::isfinite(number), "a sentence takes what is finite");
    if (!text) return;
    const double read = ReadBack(*text);
    const bool isExact = std::abs(number) >= 1e-15;
    Require(!isExact || read == number, "a sentence gives back the number that it was given");
    Require(std::abs(read - number) <= 1e-32, "a sentence is off by the 32nd digit at most");
}

void CheckFixedForms(double number, int decimals) {
    const std::string plain = FormatFixed(number, decimals, false);
    const std::string signedText = FormatFixed(number, decimals, true);
    Require(WithoutPlus(signedText) == WithoutPlus(plain), "a plus is all that a sign adds");
    const std::string stripped = FormatStripped(number, decimals, true);
    Require(signedText.starts_with(stripped), "zeros are taken from the end alone");
    FormatPlain(number, decimals);
    FormatSigned(number, decimals);
    if (!std::isfinite(number)) return;
    const double read = ReadBack(plain);
    const double step = decimals < 0 ? 1e-6 : std::pow(10.0, -decimals);
    Require(std::abs(read - number) <= step, "a fixed text is near its number");
    ReadBack(FormatFull(number));
}

// Words of up to 32 bits alone: a literal with a prefix ends at 4294967295. Decimal digits are a
// hair off by promise.
void CheckBaseForm(double number, const CalcParameters& parameters, const ReportLine& line) {
    const double pattern = ReadBack(line.value);
    Require(pattern < parameters.wordModulus, "a pattern is as long as its word");
    const bool isOnWord = number >= parameters.wordMinSigned && number < parameters.wordModulus &&
                          number == std::trunc(number);
    if (!isOnWord) return;
    Require(line.note.empty(), "nothing is missing from a number of the word");
    const double expected = number < 0.0 ? number + parameters.wordModulus : number;
    Require(pattern == expected, "a pattern is its number");
}

void CheckReportForms(double number, CalcParameters parameters) {
    static const NumberLimits limits = FindNumberLimits();
    parameters.SetWordLimits();
    FormatNumber(number, parameters);
    for (const char* keyword : {"", "percent", "none", "uint", "bin", "quat", "oct", "hex"}) {
        ReportLine line;
        FormatWithKeyword(keyword, number, parameters, limits, line);
        Require(std::isfinite(number) || !line.value.empty(), "what is not finite has a word");
        const bool isBase = line.value.size() > 1 && line.value[0] == '0' &&
                            std::string_view("bqoh").find(line.value[1]) != std::string_view::npos;
        if (isBase && parameters.SystemBits() <= 32) CheckBaseForm(number, parameters, line);
    }
}

void CheckLiteral(std::string_view text) {
    IsNumberShape(text);
    const std::optional<double> number = ParseNumberLiteral(text);
    if (!number) return;
    Require(!std::isnan(*number), "a literal is a number");
    const std::optional<double> negated = ParseNumberLiteral(std::string("-").append(text));
    Require(negated && IsSame(*negated, -*number), "a sign in front turns a literal around");
}

}  // namespace

}  // namespace orvane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    using namespace orvane::fuzz;
    FuzzedBytes bytes(data, size);
    CalcParameters parameters;
    parameters.systemBitsIndex = static_cast<std::int32_t>(bytes.Below(lastWordBitsRow + 1));
    parameters.floatPrecision = static_cast<std::int32_t>(bytes.Below(36)) - 3;
    parameters.showSign = bytes.Below(2) != 0;
    const double number = bytes.Number();
    CheckSentenceForm(number);
    CheckFixedForms(number, parameters.floatPrecision);
    CheckReportForms(number, parameters);
    Require(!FormatShortest(number).empty(), "every number has a shortest text");
    const std::string_view text = bytes.Rest();
    CheckLiteral(text);
    if (const std::optional<double> literal = ParseNumberLiteral(text)) {
        CheckSentenceForm(*literal);
        CheckReportForms(*literal, parameters);
    }
    return 0;
}
