#pragma once

#include <cstddef>
#include <string>

#include "core/calc_parameters.h"
#include "core/sentence.h"
#include "output/line_layout.h"

namespace orvane {

// Characters. No report that anyone reads is that long, but a short sheet can ask for one that no
// memory holds: every cell of a table of millions may have hundreds of digits.
inline constexpr std::size_t largestReport = std::size_t{256} << 20;

// Turns evaluated sentences into the report: one line, or one block of lines, for each sentence
// that is shown, the numbers lined up on their points. It lives for one report.
class ReportBuilder {
public:
    // Gives the report text, with "\n" behind each line. `positionText` becomes the ruler, with
    // "\r\n" behind each row, or empty; an empty list leaves it alone. In front of the sentence
    // that would take it beyond `largestReport` the report ends, and says so in a last line.
    std::string Build(const SentenceList& sentences, const CalcParameters& parameters,
                      const NumberLimits& limits, std::string& positionText);
    bool IsCut() const { return isCut; }

private:
    bool isCut = false;
};

}  // namespace orvane
