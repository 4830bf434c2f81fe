#pragma once

#include <string>
#include <string_view>

#include "core/sentence.h"

// The three sorts of names. Defines are text: they go in as they stand, with no brackets added, so
// with `define: d = 1+2` the formula `d*3` is 7. Formula names stand for values and are resolved
// when a tree is built. Constants are folded into numbers in front of that.

namespace orvane {

class RunStop;

// The index of the first define, or formula, of this name among the sentences below `limit`; -1 if
// there is none. Names are compared exactly. SentenceList::IndexNames must have run.
int FindDefine(const SentenceList& sentences, std::string_view word, int limit);
int FindFormula(const SentenceList& sentences, std::string_view word, int limit);

// Defines into the defines below them, then all defines into all formulas. Words inside strings,
// and what belongs to a number, stay. Fails with C001-09 when a sentence's substitution does not
// end, or would make it grow past 1,000,000 characters or take over 100,000 replacements, and
// when all together would grow by over 64 Mi characters.
void SubstituteDefines(SentenceList& sentences, std::string& errorText,
                       const RunStop* stop = nullptr);

// Replaces the first constant word of a sentence's text by its number; false if there is none.
bool FoldConstantOnce(SentenceList& sentences, int index);

// Replaces all of them: the same as FoldConstantOnce until it finds nothing, in one walk.
void FoldConstants(EditBuffer& text, const RunStop* stop = nullptr);

}  // namespace orvane
