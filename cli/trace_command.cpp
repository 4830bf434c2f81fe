#include <memory>

#include "cli/commands.h"
#include "cli/run_json.h"
#include "cli/sheet_run.h"

namespace orvane::cli {

namespace {

Json StageJson(const StageReport& report) {
    Json texts = Json::array();
    for (const auto& sentence : report.sentences) texts.push_back(TextJson(sentence->text.View()));
    return {{"stage", report.number},
            {"name", report.name},
            {"error", TextJson(report.errorText)},
            {"sentences", std::move(texts)}};
}

// "  12: " in front of the first line of a text, and as many blanks in front of its others.
void AppendSentence(std::string& output, int number, std::string_view text) {
    std::string margin = std::to_string(number);
    if (margin.size() < 4) margin.insert(0, 4 - margin.size(), ' ');
    margin += ": ";
    output += margin;
    for (const char c : text) {
        output += c;
        if (c == '\n') output.append(margin.size(), ' ');
    }
    output += '\n';
}

std::string StageText(const StageReport& report) {
    std::string output =
        "Stage " + std::to_string(report.number) + ", " + std::string(report.name) + "\n";
    for (int index = 0; index < report.sentences.Count(); ++index) {
        AppendSentence(output, index + 1, report.sentences[index].text.View());
    }
    if (!report.errorText.empty()) output += "      " + report.errorText + "\n";
    for (const auto& sentence : report.sentences) {
        if (!sentence->error.empty()) output += "      " + sentence->error + "\n";
    }
    return output;
}

int Trace(const RunOptions& options) {
    std::string output;
    Json stages = Json::array();
    RunWatchers watchers;
    watchers.wishes.watcher = [&](const StageReport& report) {
        if (options.json) {
            stages.push_back(StageJson(report));
        } else {
            output += StageText(report);
        }
    };
    const int status = RunSheet(options, watchers);
    if (status == exitUsage) return exitUsage;
    if (options.json) output = Print({{"stages", std::move(stages)}});
    return PrintOutput(output, status);
}

}  // namespace

void AddTraceCommand(CLI::App& app, Action& action) {
    CLI::App& command =
        AddCommand(app, "trace", "Show how a sheet is read: every sentence after each stage");
    const auto options = std::make_shared<RunOptions>();
    AddRunOptions(command, *options);
    AddJsonOption(command, options->json);
    command.callback([&action, options] { action = [options] { return Trace(*options); }; });
}

}  // namespace orvane::cli
