#include "functions/string_functions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "core/compile_stages.h"
#include "core/error_text.h"
#include "core/number_literal.h"
#include "core/run_stop.h"
#include "core/text_scan.h"
#include "functions/keyword_table.h"

namespace orvane {

namespace {

constexpr ErrorCode noBracket = {"E003-", "01"};
constexpr ErrorCode unreadable = {"E003-", "02"};

// --- the functions, each from the joined strings to a sum

std::optional<std::int64_t> CountBytes(std::string_view text) {
    return static_cast<std::int64_t>(text.size());
}

// Kept: a character is a signed 8-bit code, so what lies above 127 counts negative.
std::optional<std::int64_t> SumCodes(std::string_view text) {
    std::int64_t sum = 0;
    for (const char c : text) sum += static_cast<signed char>(c);
    return sum;
}

struct ControlCode {
    char letter;
    int code;
};

constexpr ControlCode controlCodes[] = {{'a', 7},  {'b', 8},  {'f', 12}, {'n', 10},
                                        {'r', 13}, {'s', 34}, {'t', 9},  {'v', 11}};

// Each letter stands for the control character that it names behind a backslash in other
// languages, and `s` for the quote. Any other character can't be read.
std::optional<std::int64_t> SumControlCodes(std::string_view text) {
    std::int64_t sum = 0;
    for (const char c : text) {
        const auto found = std::find_if(std::begin(controlCodes), std::end(controlCodes),
                                        [c](const ControlCode& row) { return row.letter == c; });
        if (found == std::end(controlCodes)) return std::nullopt;
        sum += found->code;
    }
    return sum;
}

struct StringFunction {
    std::string_view name;
    std::optional<std::int64_t> (*sum)(std::string_view text);
};

constexpr StringFunction stringFunctions[] = {
    {"strlen", CountBytes},
    {"strsum", SumCodes},
    {"strsumspecial", SumControlCodes},
};

// --- finding

// Where the first string function's name stands, looked for outside strings. A run that is asked
// to stop finds one at once.
std::size_t FindStringFunction(std::string_view text, const RunStop* stop) {
    const std::string_view name = FindWord(text, [stop](std::string_view word) {
        return IsStopAsked(stop) ||
               (IsWordStart(word.front()) && keywordTable.IsStringFunction(word));
    });
    return name.empty() ? text.size() : static_cast<std::size_t>(name.data() - text.data());
}

// The `)` that balances the `(` at `open`, brackets in strings left aside.
std::optional<std::size_t> FindCallEnd(std::string_view text, std::size_t open) {
    std::size_t depth = 0;
    std::size_t at = open;
    while (at < text.size()) {
        if (text[at] == '"') {
            at = SkipString(text, at);
            continue;
        }
        if (text[at] == '(') ++depth;
        if (text[at] == ')' && --depth == 0) return at;
        ++at;
    }
    return std::nullopt;
}

// All strings of a call's text in a row. Nothing when there is none, or anything else.
std::optional<std::string> JoinStrings(std::string_view arguments) {
    std::optional<std::string> joined;
    std::size_t at = 0;
    while (at < arguments.size()) {
        if (arguments[at] == '"') {
            const std::size_t closing = arguments.find('"', at + 1);
            if (closing == std::string_view::npos) return std::nullopt;
            if (!joined) joined.emplace();
            joined->append(arguments, at + 1, closing - at - 1);
            at = closing + 1;
        } else if (std::string_view("+() ").find(arguments[at]) != std::string_view::npos) {
            ++at;
        } else {
            return std::nullopt;
        }
    }
    return joined;
}

}  // namespace

std::optional<double> ComputeStringCall(std::string_view name, std::string_view arguments) {
    const auto function =
        std::find_if(std::begin(stringFunctions), std::end(stringFunctions),
                     [name](const StringFunction& row) { return row.name == name; });
    const std::optional<std::string> text = JoinStrings(arguments);
    if (function == std::end(stringFunctions) || !text) return std::nullopt;
    const std::optional<std::int64_t> sum = function->sum(*text);
    return sum ? std::optional(static_cast<double>(*sum)) : std::nullopt;
}

bool ReplaceNextStringCall(ForwardEdit& walk, int sentence, std::string& errorText,
                           const RunStop* stop) {
    walk.Pass(FindStringFunction(walk.Rest(), stop));
    if (walk.AtEnd() || IsStopAsked(stop)) return false;

    const std::string_view text = walk.Rest();
    const std::size_t nameEnd = FindWordEnd(text, 0);
    const std::size_t open = SkipSpaces(text, nameEnd);
    if (open == text.size() || text[open] != '(') {
        return QuotedErrorText(noBracket, sentence, text, errorText);
    }
    const std::optional<std::size_t> close = FindCallEnd(text, open);
    if (!close) return QuotedErrorText(unreadable, sentence, text, errorText);

    const std::string_view name = text.substr(0, nameEnd);
    const std::string_view arguments = text.substr(open + 1, *close - open - 1);
    const std::optional<double> value = ComputeStringCall(name, arguments);
    const std::optional<std::string> number = value ? FormatForSentence(*value) : std::nullopt;
    if (!number) return QuotedErrorText(unreadable, sentence, text, errorText);
    walk.Replace(*close + 1, *number);
    return true;
}

void StringFunctionPass(SentenceList& sentences, std::string& errorText, const RunStop* stop) {
    for (int index = 0; index < sentences.Count() && !IsStopAsked(stop); ++index) {
        Sentence& sentence = sentences[index];
        if (!sentence.IsCalculation()) continue;
        // Nearly every sentence ends here.
        const std::string_view text = sentence.text.View();
        if (FindStringFunction(text, stop) == text.size()) continue;
        ForwardEdit walk(sentence.text);
        while (ReplaceNextStringCall(walk, index, errorText, stop)) {
        }
        if (!errorText.empty()) return;
    }
}

}  // namespace orvane
