#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/watched_process.h"

// The built command-line tool as a process of its own, for tests: bytes in, bytes and an exit
// status out. No shell stands between.

namespace orvane::test {

struct ToolRun {
    enum class Output { captured, fullDevice, closed };
    enum class Error { captured, terminal };

    std::vector<std::string> arguments = {};
    std::string_view input = {};
    bool inputClosed = false;
    Output output = Output::captured;
    Error error = Error::captured;
    std::vector<std::pair<std::string, std::string>> environment = {};  // on top of the test's own
    std::string folder = {};                                            // to run in; empty: here
    bool withoutRights = false;       // where the test is root's: as a user who owns nothing
    std::optional<Fault> fault = {};  // what befalls it; its streams must fit into their pipes then
    std::chrono::seconds timeOut{120};
};

struct ToolResult {
    int status = -1;  // the exit status; -1 when the tool was killed or could not be started
    std::string output;
    std::string error;
    // From the start of the process to the first byte on its standard error; 0 without one.
    std::chrono::duration<double> untilError{};
    WatchedEnd watched = {};  // of a run with a fault
};

// Runs the tool to its end. Past the time-out it is killed.
ToolResult RunTool(const ToolRun& run);
ToolResult RunTool(std::vector<std::string> arguments, std::string_view input = {});

// A folder that goes with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& Path() const { return path; }
    // Writes a file of this name and gives its path.
    std::string Write(std::string_view name, std::string_view bytes) const;

private:
    std::string path;
};

// What the lines of a terminal show after these bytes, blanks at their ends left out.
std::string ShownOnTerminal(std::string_view bytes);

}  // namespace orvane::test
