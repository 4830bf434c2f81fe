#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "app/calculation.h"
#include "core/calc_parameters.h"
#include "core/sentence.h"

// What the node inspector shows: the tree of the sentence at the caret.

namespace orvane {

class EditorModel;

// The caret's place in the editor's text, in bytes from its start.
std::size_t CaretOffset(const EditorModel& editor);

// The index of the sentence at this place. A sentence reaches from behind the semicolon ahead of it
// to behind its own one; between two that touch, the place is that of the second. Blank sentences
// count for nothing: their places are those of the next one. None behind the last sentence.
std::optional<int> SentenceAt(std::string_view sheet, std::size_t place);

struct InspectedSentence {
    SentenceList sentences;        // as they stand after the run
    FunctionNode* root = nullptr;  // of the sentence at the caret, with its tree
    std::string message;           // where it has no tree: why
};

// Calculates the sheet afresh, with a copy of the options, and keeps the tree of the sentence at
// this place. A sentence whose evaluation failed has its tree as far as it was built. Neither the
// curves of the last run nor anything that is shown changes, except for the progress.
InspectedSentence InspectSentence(std::string_view sheet, std::size_t place,
                                  CalcParameters parameters, ProgressDisplay& progress);

}  // namespace orvane
