#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/calc_parameters.h"
#include "core/sentence.h"

namespace orvane {

// Of brackets that stand directly around brackets, such as "((a))", all but the outer pair are
// overwritten with blanks, so that grouping twice makes no node twice.
void RemoveDoubledBrackets(EditBuffer& text);

// Makes the tree of function-call text such as "plus(2,times(3,x))" below `node`. The text must
// stay where it is as long as the tree lives: nodes look into it. Words of earlier formulas take
// their values now. The nodes below come from the pool of the sentence at `sentenceIndex`. Stops at
// the first E002 message, with the tree as far as it was built. E002-06 refuses more than
// `largestTree` nodes, which take 2 GB.
inline constexpr std::size_t largestTree = std::size_t{1} << 23;
void BuildNode(FunctionNode& node, SentenceList& sentences, int sentenceIndex,
               const CalcParameters& parameters, std::string_view text, std::string& errorText);

}  // namespace orvane
