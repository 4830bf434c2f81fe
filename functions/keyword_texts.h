#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "functions/keyword_table.h"

// The table's texts as people read them: one line for each signature of a keyword, with a blank
// ahead of every comma. Views go into the row, which must outlive what is made of it.

namespace orvane {

// One signature: "point ,point" and, where the row has an optional form for it, " ,point ,...".
struct Signature {
    std::string mainParams;
    std::string optionalParams;  // continues the main ones, so it begins with " ,"; or empty

    bool operator==(const Signature&) const = default;
};

// One signature for each main form, with the optional form of the same index beside it. A row
// without parameters has none.
std::vector<Signature> SignaturesOf(const KeywordEntry& entry);

// One line of a list of keywords, column by column.
struct KeywordLine {
    std::string_view returnText;  // or what the word is: "<constant>", "<header>"
    std::string_view name;
    std::string_view opening;  // "(" for a function
    Signature signature;       // of a constant: its digits in the place of the main parameters
    std::string_view closing;  // ")" for a function

    bool operator==(const KeywordLine&) const = default;
};

// The lines of one keyword: one for each signature of a function, and a single one for a constant
// or a header.
std::vector<KeywordLine> LinesOf(const KeywordEntry& entry);

}  // namespace orvane
