#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/cli_options.h"
#include "cli/tool_commands.h"
#include "fuzz/fuzzed_bytes.h"

// Any words as a command line, one a line. Nothing is run: reading words opens no file.

const char* const orvane::cli::programName = "orvane-cli";

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    using namespace orvane::fuzz;
    constexpr std::size_t mostWords = 30;
    FuzzedBytes bytes(data, size);
    std::vector<std::string> words;
    while (!bytes.IsEmpty() && words.size() < mostWords) {
        words.emplace_back(bytes.TextUpTo('\n'));
        // A word of a command line ends at a NUL.
        words.back().resize(words.back().find('\0') == std::string::npos ? words.back().size()
                                                                         : words.back().find('\0'));
    }
    CLI::App app("", cli::programName);
    cli::Action action;
    cli::AddToolCommands(app, action);
    const cli::CommandLine line = cli::ReadCommandLine(app, action, words);
    const int there =
        (line.action ? 1 : 0) + (line.output.empty() ? 0 : 1) + (line.refusal.empty() ? 0 : 1);
    Require(there == 1, "a command line asks for one thing or is refused");
    Require(line.refusal.empty() || line.refusal.find("--help") != std::string::npos,
            "a refusal says where there is help");
    Require(!line.refusal.starts_with("\n"), "a refusal has a reason");
    return 0;
}
