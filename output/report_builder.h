#pragma once

#include <string>

#include "core/calc_parameters.h"
#include "core/sentence.h"
#include "output/line_layout.h"

namespace orvane {

// Turns evaluated sentences into the report: one line, or one block of lines, for each sentence
// that is shown, the numbers lined up on their points. It lives for one report.
class ReportBuilder {
public:
    // Gives the report text, with "\n" behind each line. `positionText` becomes the ruler, with
    // "\r\n" behind each row, or empty; an empty list leaves it alone.
    std::string Build(const SentenceList& sentences, const CalcParameters& parameters,
                      const NumberLimits& limits, std::string& positionText);
};

}  // namespace orvane
