#pragma once

#include <string>
#include <string_view>

#include "core/calc_parameters.h"
#include "core/sentence.h"

// Single stages and the first few of them, for the tests of the passes.

namespace orvane::test {

struct StagedSheet {
    SentenceList sentences;
    std::string errorText;
};

// A sheet behind its first `last` stages, or behind the first one that failed. Five at most: the
// sixth needs options.
StagedSheet RunStages(std::string_view sheet, int last);

// What a stage makes of one formula.
struct StagedText {
    std::string text;
    std::string error;

    bool operator==(const StagedText&) const = default;
};

using Stage = void (*)(SentenceList& sentences, std::string& errorText, const RunStop* stop);

StagedText RunStage(Stage stage, std::string_view formula);

// Text and error of the last sentence behind the first `last` stages of a sheet.
StagedText LastText(std::string_view sheet, int last);

// A tree in one line: for each node its depth, its kind and its word or text, in the order in
// which the text names them, such as "0 function plus, 1 number 2, 1 variable x".
std::string TreeText(const FunctionNode& root);

// `piece` that many times, one behind the other.
std::string Repeat(std::string_view piece, int count);

}  // namespace orvane::test
