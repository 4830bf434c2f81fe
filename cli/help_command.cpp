#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/cli_options.h"
#include "cli/commands.h"
#include "cli/help_text.h"

namespace orvane::cli {

namespace {

constexpr const char* introduction =
    "orvane-cli help KEYWORD tells about a word of the sheet language; orvane-cli\n"
    "keywords lists all of them. orvane-cli help PAGE prints one of these pages:\n\n";

std::string ListOfPages() {
    std::string list = introduction;
    std::size_t longest = 0;
    const std::vector<HelpTopic> topics = HelpTopics();
    for (const HelpTopic& topic : topics) longest = std::max(longest, topic.path.size());
    for (const HelpTopic& topic : topics) {
        std::string path(topic.path.substr(0, topic.path.rfind('.')));
        path.resize(longest, ' ');
        list += "  " + path + topic.title + '\n';
    }
    return list;
}

int RefuseWord(const std::string& word) {
    std::string message = "'" + word + "' is no keyword and no page of the help";
    const std::vector<std::string> names = NamesNear(word);
    for (const std::string& name : names) {
        message += (&name == &names.front() ? "; near it: " : ", ") + name;
    }
    PrintError(message + "\nRun orvane-cli help to see all pages.");
    return exitUsage;
}

int ShowHelp(const std::string& word) {
    if (word.empty()) return PrintOutput(ListOfPages(), exitFine);
    std::optional<std::string> text = HelpForKeyword(word);
    if (!text) text = HelpForPage(word);
    return text ? PrintOutput(*text, exitFine) : RefuseWord(word);
}

}  // namespace

void AddHelpCommand(CLI::App& app, Action& action) {
    CLI::App& command =
        AddCommand(app, "help", "Tell about a word of the sheet language, or print a help page");
    const auto word = std::make_shared<std::string>();
    command.add_option("WORD", *word, "A keyword, or the path of a page; all pages without it")
        ->option_text(" ")
        ->allow_extra_args(false);
    command.callback([&action, word] { action = [word] { return ShowHelp(*word); }; });
}

}  // namespace orvane::cli
