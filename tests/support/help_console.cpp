#include "tests/support/help_console.h"

#include <algorithm>
#include <utility>

#include "tests/support/help_folder.h"

namespace orvane::test {

namespace {

constexpr std::string_view prompt = "$ ";
constexpr std::string_view anyLines = "...";

std::string WithoutBlanksAtItsEnd(std::string_view line) {
    return std::string(line.substr(0, line.find_last_not_of(" \t\r") + 1));
}

std::vector<std::string> LinesIn(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(WithoutBlanksAtItsEnd(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    while (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
}

// The words of a command; double quotes hold one together.
std::vector<std::string> WordsIn(std::string_view command) {
    std::vector<std::string> words;
    bool isQuoted = false;
    bool isOpen = false;
    for (const char c : command) {
        if (c == '"') {
            isQuoted = !isQuoted;
        } else if (c == ' ' && !isQuoted) {
            isOpen = false;
            continue;
        }
        if (!isOpen) words.emplace_back();
        isOpen = true;
        if (c != '"') words.back() += c;
    }
    return words;
}

ConsoleCommand CommandIn(const std::string& page, const std::string& line) {
    ConsoleCommand command;
    command.place = page + ": " + line;
    std::vector<std::string> words = WordsIn(line);
    if (words.size() > 3 && words[0] == "echo" && words[2] == "|") {
        command.input = words[1] + "\n";
        words.erase(words.begin(), words.begin() + 3);
    }
    if (words.empty()) return command;
    command.program = words[0];
    command.arguments.assign(words.begin() + 1, words.end());
    return command;
}

void AddBlock(const std::string& page, const std::string& text, HelpConsole& console) {
    std::vector<ConsoleCommand> commands;
    for (const std::string& line : LinesIn(text)) {
        if (line.starts_with(prompt)) {
            commands.push_back(CommandIn(page, line.substr(prompt.size())));
        } else if (!commands.empty()) {
            commands.back().output.push_back(line);
        }
    }
    for (ConsoleCommand& command : commands) {
        if (command.program != "cat" || command.arguments.size() != 1) {
            console.commands.push_back(std::move(command));
            continue;
        }
        ConsoleFile& file = console.files.emplace_back();
        file.name = command.arguments[0];
        for (const std::string& line : command.output) file.text += line + "\n";
    }
}

}  // namespace

HelpConsole ConsoleOfHelp() {
    HelpConsole console;
    for (const auto& [path, page] : HelpPages()) {
        for (const pugi::xpath_node& block : page.document.select_nodes("//pre[not(@class)]")) {
            const std::string text = TextOf(block.node());
            if (text.starts_with(prompt)) AddBlock(path, text, console);
        }
    }
    return console;
}

bool MatchesOutput(const std::vector<std::string>& shown, std::string_view printed) {
    const std::vector<std::string> lines = LinesIn(printed);
    std::size_t at = 0;
    bool mayPass = false;
    for (const std::string& wanted : shown) {
        if (wanted == anyLines) {
            mayPass = true;
            continue;
        }
        while (mayPass && at < lines.size() && lines[at] != wanted) ++at;
        if (at >= lines.size() || lines[at] != wanted) return false;
        ++at;
        mayPass = false;
    }
    return mayPass || at == lines.size();
}

}  // namespace orvane::test
