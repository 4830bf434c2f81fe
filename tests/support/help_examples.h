#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The worked examples of the help pages: a <pre class="sheet"> with the <pre class="report"> that
// stands directly behind it.

namespace orvane::test {

struct HelpExample {
    std::size_t line = 0;  // of the page, from 1, where the sheet begins
    std::string sheet;
    std::string options;  // of the command line, as in "--bits 8 --precision 4"
    std::string report;   // as the page shows it, without line ends at its end
    // Where the report stands in the page's bytes, between its tags.
    std::size_t reportFrom = 0;
    std::size_t reportTo = 0;
};

struct HelpExamples {
    std::vector<HelpExample> examples;
    std::vector<std::string> faults;  // with the number of their line in front
};

// A page that is not well-formed, a sheet without a report behind it and a report without a sheet
// in front of it are faults.
HelpExamples ExamplesOf(std::string_view page);

struct HelpReport {
    std::string text;   // without line ends at its end
    std::string fault;  // why there is none: wrong options, or a sheet with nothing in it
};

// What the command-line tool prints for the sheet. The lines of the ruler end like the others: a
// page can't show the difference.
HelpReport ReportOf(const HelpExample& example);

}  // namespace orvane::test
