#include <memory>
#include <string>
#include <vector>

#include "cli/archive_actions.h"
#include "cli/cli_options.h"
#include "cli/commands.h"

namespace orvane::cli {

namespace {

struct ArchiveWord {
    const char* label;
    std::optional<std::string> ArchiveOptions::*target;
    const char* description;
    bool isNeeded = true;
};
constexpr ArchiveWord archiveWord = {"ARCHIVE", &ArchiveOptions::archive, "The archive's file"};
constexpr ArchiveWord nameWord = {"NAME", &ArchiveOptions::name, "The sheet's name"};
constexpr ArchiveWord newNameWord = {"NEWNAME", &ArchiveOptions::newName, "Its new name"};
constexpr ArchiveWord fileWord = {
    "FILE", &ArchiveOptions::file,
    "The sheet's text; the standard input where there is none or it is -", false};
constexpr ArchiveWord toFolderWord = {"DIR", &ArchiveOptions::folder,
                                      "The folder; it is made where it is missing"};
constexpr ArchiveWord fromFolderWord = {"DIR", &ArchiveOptions::folder,
                                        "A folder with an index.json, as export writes it"};

struct ArchiveRow {
    const char* name;
    const char* description;
    std::vector<ArchiveWord> words;
    bool takesForce;
    int (*run)(const ArchiveOptions& options);
};

const std::vector<ArchiveRow>& ArchiveRows() {
    static const std::vector<ArchiveRow> rows = {
        {"list", "List the names of the sheets", {archiveWord}, false, ListSheets},
        {"show", "Print a sheet's text", {archiveWord, nameWord}, false, ShowSheet},
        {"add", "Add a sheet at the end", {archiveWord, nameWord, fileWord}, true, AddSheet},
        {"replace",
         "Replace a sheet's text",
         {archiveWord, nameWord, fileWord},
         true,
         ReplaceSheet},
        {"rename",
         "Give a sheet another name",
         {archiveWord, nameWord, newNameWord},
         true,
         RenameStoredSheet},
        {"delete", "Delete a sheet", {archiveWord, nameWord}, false, DeleteStoredSheet},
        {"move-up", "Put a sheet one place up", {archiveWord, nameWord}, false, MoveUp},
        {"move-down", "Put a sheet one place down", {archiveWord, nameWord}, false, MoveDown},
        {"export",
         "Write a folder of text files",
         {archiveWord, toFolderWord},
         false,
         ExportSheets},
        {"import",
         "Take over the sheets of a folder; makes the archive where it is missing",
         {archiveWord, fromFolderWord},
         true,
         ImportSheets},
    };
    return rows;
}

// Asked here and not by the parser, which would see this before a word that is spelled wrong.
int RunArchive(const ArchiveRow& row, const ArchiveOptions& options) {
    for (const ArchiveWord& word : row.words) {
        if (!word.isNeeded || options.*word.target) continue;
        PrintError(std::string(word.label) + " is needed\nRun orvane-cli archive " + row.name +
                   " --help to see what there is.");
        return exitUsage;
    }
    return row.run(options);
}

void AddArchiveRow(CLI::App& archive, const ArchiveRow& row, Action& action) {
    CLI::App& command = AddCommand(archive, row.name, row.description);
    const auto options = std::make_shared<ArchiveOptions>();
    for (const ArchiveWord& word : row.words) {
        const bool isName = word.target == nameWord.target || word.target == newNameWord.target;
        const auto take = [options, word, isName](const std::string& text) {
            (*options).*word.target = isName ? NameFromWord(text) : text;
        };
        command.add_option_function<std::string>(word.label, take, word.description)
            ->type_name("word")
            ->option_text(word.isNeeded ? "(needed)" : " ")
            ->allow_extra_args(false);  // a name in brackets is a name like any other
    }
    command.add_flag("--raw", options->raw, "Names and texts are bytes, not UTF-8")
        ->disable_flag_override();
    if (row.takesForce) {
        command
            .add_flag("--force", options->force,
                      "Store also what is refused; characters outside the code page become ?")
            ->disable_flag_override();
    }
    command.callback([&action, &row, options] {
        action = [&row, options] { return RunArchive(row, *options); };
    });
}

}  // namespace

void AddArchiveCommand(CLI::App& app, Action& action) {
    CLI::App& archive = AddCommand(app, "archive", "Keep sheets in the archives of the program");
    archive.require_subcommand(0, 1);
    for (const ArchiveRow& row : ArchiveRows()) AddArchiveRow(archive, row, action);
}

}  // namespace orvane::cli
