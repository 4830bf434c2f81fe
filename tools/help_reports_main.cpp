#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "storage/file_bytes.h"
#include "tests/support/help_examples.h"

// Calculates the sheets of help pages and writes what they print behind them: see
// tools/help_reports.

namespace orvane {

namespace {

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '&') {
            escaped += "&amp;";
        } else if (c == '<') {
            escaped += "&lt;";
        } else if (c == '>') {
            escaped += "&gt;";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

void Say(const std::string& line) {
    std::string reason;
    WriteStream(stderr, line + "\n", reason);
}

// A reader drops the line end directly behind the tag, so a report that begins with one needs two.
std::string ReportText(std::string_view before, std::string_view report) {
    const bool leadingLineEnd = before.starts_with('\n') || report.starts_with('\n');
    std::string text = Escaped(report);
    if (leadingLineEnd) text.insert(text.begin(), '\n');
    return text;
}

struct PageResult {
    std::string page;
    int fresh = 0;  // reports that the page shows otherwise
    int faults = 0;
};

// The page with every report as its sheet prints it, all other bytes as they were.
PageResult Refresh(const std::string& path, std::string page) {
    PageResult result;
    const test::HelpExamples found = test::ExamplesOf(page);
    for (const std::string& fault : found.faults) {
        Say(path + ":" + fault);
        ++result.faults;
    }
    // From the last one on, so that the places of those in front stay true.
    for (auto example = found.examples.rbegin(); example != found.examples.rend(); ++example) {
        const std::string place = path + ":" + std::to_string(example->line) + ": ";
        const test::HelpReport report = test::ReportOf(*example);
        if (!report.fault.empty()) {
            Say(place + report.fault);
            ++result.faults;
        } else if (report.text != example->report) {
            Say(place + "a new report");
            ++result.fresh;
            const std::size_t length = example->reportTo - example->reportFrom;
            const std::string before = page.substr(example->reportFrom, length);
            page.replace(example->reportFrom, length, ReportText(before, report.text));
        }
    }
    result.page = std::move(page);
    return result;
}

int Run(const std::vector<std::string>& words) {
    bool check = false;
    bool isFine = true;
    std::string reason;
    for (const std::string& path : words) {
        if (path == "--check") {
            check = true;
            continue;
        }
        const std::optional<std::string> page = ReadFile(path, reason);
        if (!page) {
            Say(path + " can't be read: " + reason);
            isFine = false;
            continue;
        }
        const PageResult result = Refresh(path, *page);
        if (result.faults > 0 || (check && result.fresh > 0)) isFine = false;
        if (check || result.fresh == 0) continue;
        std::string rest = result.page;
        if (!WriteFile(
                path, [&rest] { return std::exchange(rest, {}); }, reason)) {
            Say(path + " can't be written: " + reason);
            isFine = false;
        }
    }
    return isFine ? 0 : 1;
}

}  // namespace

}  // namespace orvane

int main(int count, char** words) {
    return orvane::Run(std::vector<std::string>(words + 1, words + count));
}
