#pragma once

#include <string>

#include "core/sentence.h"

// The six stages of a compile, one line each, in the order in which core/compile_sheet runs them.
// This list only declares; who defines a stage may stand on any floor. A stage has failed exactly
// when the error text is not empty behind it, and the first message is the one that stays. A
// stage that is asked to stop returns with the sentences as they are then: nobody reads them.

namespace orvane {

struct CalcParameters;
class RunStop;

// 1: cleans the text in place, cuts sentences, checks them (C001) and substitutes defines. The
// text is [textBegin, textEnd) with a NUL behind it.
void AnalyseSentences(SentenceList& sentences, char* textBegin, char* textEnd,
                      std::string& errorText,
                      const RunStop* stop = nullptr);  // sentence_analysis.cpp
// 2: folds the string functions into numbers (E003).
void StringFunctionPass(SentenceList& sentences, std::string& errorText,
                        const RunStop* stop = nullptr);  // functions/string_functions.cpp
// 3: how words, points and numbers stand (C002-01, -03, -04, -06); collapses runs of signs.
void CheckNumbersAndPoints(SentenceList& sentences, std::string& errorText,
                           const RunStop* stop = nullptr);  // symbol_checks.cpp
// 4: infix text to function-call text (C002-09, -10, -11, -12).
void RewriteOperators(SentenceList& sentences, std::string& errorText,
                      const RunStop* stop = nullptr);  // operator_rewriting.cpp
// 5: rejects what no tree can be built from (C002-02, -05).
void CheckSymbols(SentenceList& sentences, std::string& errorText,
                  const RunStop* stop = nullptr);  // symbol_checks.cpp
// 6: builds and evaluates each formula in order. A message moves to its sentence and the next
// sentence goes on, so the error text is empty behind this stage. Unless `keepTrees` is set, a
// tree goes once its root has the value: all trees of a large sheet at once take far more memory
// than its text and its values. True when no formula failed. When
// `parameters` ask to stop, the sentence that is under way and all behind it leave the list.
bool BuildAndEvaluate(SentenceList& sentences, const CalcParameters& parameters, bool keepTrees,
                      std::string& errorText);  // compile_sheet.cpp

}  // namespace orvane
