#pragma once

#include <string>
#include <string_view>

#include "core/sentence.h"

// The eight checks on whole sentences. Each gives the message of a fault, or an empty text. Numbers
// in messages count from one, for lines as for sentences.

namespace orvane {

class RunStop;

// C001-01: a line of the cleaned sheet with an odd count of '"'. Strings do not cross line ends.
std::string CheckLineStrings(std::string_view sheet);

// C001-02: a header that is no header keyword.
std::string CheckHeader(const SentenceList& sentences, int index);

// C001-03: a name that a sentence below bears as well, whatever their kinds. Names must have been
// indexed.
std::string CheckUniqueName(const SentenceList& sentences, int index);

// C001-04: a name that is a keyword.
std::string CheckReservedName(const SentenceList& sentences, int index);

// C001-05: an odd count of '"' in a line of the sentence.
std::string CheckSentenceStrings(const SentenceList& sentences, int index);

// C001-06 and C001-07: a define that uses the name of a define below it, a formula that uses the
// name of a formula below it. Across the kinds the order is free. Names must have been indexed.
std::string CheckDefineOrder(const SentenceList& sentences, int index,
                             const RunStop* stop = nullptr);
std::string CheckFormulaOrder(const SentenceList& sentences, int index,
                              const RunStop* stop = nullptr);

// C001-08: brackets of a formula that do not match. The three kinds of bracket are one: all are
// rewritten to round ones on the way. A formula that passes has no line feed any more.
std::string CheckAndUnifyBrackets(SentenceList& sentences, int index);

}  // namespace orvane
