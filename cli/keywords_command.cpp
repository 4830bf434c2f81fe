#include <memory>

#include "cli/cli_options.h"
#include "cli/commands.h"
#include "cli/run_json.h"
#include "functions/keyword_table.h"
#include "functions/keyword_texts.h"

namespace orvane::cli {

namespace {

struct KeywordsOptions {
    std::string prefix;
    bool json = false;
};

Json OptionalText(const char* text) { return text != nullptr ? Json(text) : Json(nullptr); }

Json KeywordJson(const KeywordEntry& entry) {
    return {{"name", entry.name},
            {"group", KeywordTable::GroupWord(entry)},
            {"returns", OptionalText(entry.returnText)},
            {"minParams", entry.minParams},
            {"maxParams", entry.maxParams},
            {"mainParams", OptionalText(entry.mainParams)},
            {"optionalParams", OptionalText(entry.optionalParams)}};
}

// "a, b" for the "a ,b" of a list with columns.
std::string WithPlainCommas(std::string text) {
    for (std::size_t at = text.find(" ,"); at != std::string::npos; at = text.find(" ,", at + 2)) {
        text.replace(at, 2, ", ");
    }
    return text;
}

// "float sqrt(ufloat)": what it gives, its name and what it takes, one line a signature.
std::string LineText(const KeywordLine& line) {
    std::string text(line.returnText);
    constexpr std::size_t firstColumn = 14;
    if (text.size() < firstColumn) text.append(firstColumn - text.size(), ' ');
    text.append("  ").append(line.name).append(line.opening);
    if (line.opening.empty() && !line.signature.mainParams.empty()) text += " = ";
    text.append(WithPlainCommas(line.signature.mainParams + line.signature.optionalParams));
    return text.append(line.closing) + '\n';
}

int ListKeywords(const KeywordsOptions& options) {
    std::string output;
    Json entries = Json::array();
    for (const KeywordEntry* entry : keywordTable.Sorted()) {
        if (!std::string_view(entry->name).starts_with(options.prefix)) continue;
        entries.push_back(KeywordJson(*entry));
        for (const KeywordLine& line : LinesOf(*entry)) output += LineText(line);
    }
    if (entries.empty()) {
        PrintError("no keyword begins with '" + options.prefix +
                   "'; run orvane-cli keywords to see all of them");
        return exitUsage;
    }
    return PrintOutput(options.json ? Print({{"keywords", std::move(entries)}}) : output, exitFine);
}

}  // namespace

void AddKeywordsCommand(CLI::App& app, Action& action) {
    CLI::App& command = AddCommand(app, "keywords", "List the keywords of the sheet language");
    const auto options = std::make_shared<KeywordsOptions>();
    command.add_option("PREFIX", options->prefix, "Only the keywords that begin with this");
    AddJsonOption(command, options->json);
    command.callback([&action, options] { action = [options] { return ListKeywords(*options); }; });
}

}  // namespace orvane::cli
