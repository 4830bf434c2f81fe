#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/calc_parameters.h"
#include "functions/value.h"

// The columns of a report, made with blanks for a pane of fixed pitch. Widths and positions count
// characters; no line has a greatest width, nothing is wrapped or cut.

namespace orvane {

// The working record of one shown sentence.
struct ReportLine {
    std::string_view body;   // the sentence's text; the sentence outlives the report
    std::string value;       // number text, rows of a table, error text, or a text sentence's body
    bool isNumber = false;   // `value` is one number and takes part in the alignment
    bool isFormula = false;  // set for all but text sentences
    std::string_view keyword;  // the sentence's header, may be empty
    std::string name;          // the left column, padded
    std::string note;          // the remark behind a number, may be empty
    std::string line;          // finished; a table's further rows follow behind "\n"
};

// The widest parts of all number lines, ahead of the point and behind it.
struct DecimalColumns {
    std::size_t integer = 0;
    std::size_t fraction = 0;

    // Takes in one more line, if it is a number. A value without a point is all integer part, so
    // "25 %" counts 4 there.
    void Widen(const ReportLine& line);
};

// Fills `line` from the other fields. A text sentence passes through unchanged, whatever the
// columns are; what is no number stands right behind its name.
void AlignLine(ReportLine& line, const DecimalColumns& columns);
// The same text behind a report; the line is left as it is.
void AppendAligned(std::string& report, const ReportLine& line, const DecimalColumns& columns);

// The text of a value that is not one number: cells joined by ",", each column lined up on its
// points, rows joined by "\n" with `indent` ahead of all but the first. A short row prints its own
// cells only. Empty when there is no cell. No output keyword takes part. Nothing where the text has
// more than `most` characters.
std::optional<std::string> FormatTable(const Value& value, const CalcParameters& parameters,
                                       std::string_view indent,
                                       std::size_t most = std::string::npos);

// What stands in place of a padded name with " = ": that many blanks, none if no name is shown.
std::string NameIndent(std::size_t nameWidth);

// The two rows of the ruler above the values, each with "\r\n" behind it.
std::string FormatPositionLine(std::size_t nameWidth, const DecimalColumns& columns);

}  // namespace orvane
