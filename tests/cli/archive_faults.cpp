#include "tests/cli/archive_faults.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "storage/archive.h"

namespace orvane::test {

namespace {

constexpr std::size_t pieceSize = 1024;

}  // namespace

MarkedSheet SheetOfLength(const std::string& name, std::size_t length) {
    MarkedSheet sheet{name, {}};
    for (int line = 1; sheet.text.size() < length; ++line) {
        sheet.text += "text:" + name + " " + std::to_string(line) + ";\r\n";
    }
    sheet.text.resize(length);
    return sheet;
}

std::vector<MarkedSheet> FiveSheets() {
    return {SheetOfLength("first", 900), SheetOfLength("second", 1300), SheetOfLength("third", 40),
            SheetOfLength("fourth", 1500), SheetOfLength("fifth", 700)};
}

std::string BytesOfSheets(const std::vector<MarkedSheet>& sheets) {
    std::string bytes(archivePreamble);
    for (const MarkedSheet& sheet : sheets) {
        bytes += nameMark + sheet.name + textMark + sheet.text;
    }
    return bytes;
}

const std::vector<Saving>& AllSavings() {
    static const std::vector<Saving> savings = {
        {"add", {"add", "new"}, SheetOfLength("new", 1700).text, {"new"}},
        {"replace_by_longer", {"replace", "second"}, SheetOfLength("2", 2100).text, {"second"}},
        {"replace_by_shorter", {"replace", "second"}, SheetOfLength("2", 150).text, {"second"}},
        {"replace_by_nothing", {"replace", "first"}, "", {"first"}},
        {"rename_longer", {"rename", "second", "the second"}, "", {"second", "the second"}},
        {"rename_shorter", {"rename", "first", "1"}, "", {"first", "1"}},
        {"delete_first", {"delete", "first"}, "", {"first"}},
        {"delete_last", {"delete", "fifth"}, "", {"fifth"}},
        {"move_up", {"move-up", "fourth"}, "", {"third", "fourth"}},
        {"move_down", {"move-down", "first"}, "", {"first", "second"}},
        {"import", {"import", "DIR"}, "", {"second", "new"}},
    };
    return savings;
}

SavedArchive::SavedArchive() : folder(""), old(BytesOfSheets(FiveSheets())) {
    Put(old);
    imported.Write("index.json",
                   R"({"orvane_archive": 1, "texts": "utf-8", "preamble": "", "sheets": [)"
                   R"({"file": "2.txt", "name": "second"}, {"file": "n.txt", "name": "new"}],)"
                   R"( "rest": ""})");
    imported.Write("2.txt", SheetOfLength("imported", 2500).text);
    // For the tests that give up their rights.
    std::filesystem::permissions(imported.Path(), std::filesystem::perms(0755));
    imported.Write("n.txt", SheetOfLength("new", 600).text);
}

ToolRun SavedArchive::RunOf(const Saving& saving) const {
    ToolRun run;
    run.arguments = {"archive", saving.command.front(), Archive()};
    for (std::size_t at = 1; at < saving.command.size(); ++at) {
        const std::string& word = saving.command[at];
        run.arguments.push_back(word == "DIR" ? imported.Path() : word);
    }
    run.input = saving.input;
    return run;
}

ToolResult SavedArchive::Save(const Saving& saving, const std::optional<Fault>& fault) const {
    ToolRun run = RunOf(saving);
    if (fault) run.fault = Here(*fault);
    return RunTool(run);
}

std::string SavedArchive::FreshBytes(const Saving& saving) const {
    const ToolResult result = Save(saving);
    EXPECT_EQ(result.status, 0) << result.error;
    std::string fresh = Bytes();
    EXPECT_NE(fresh, old);
    Put(old);
    return fresh;
}

Fault SavedArchive::Here(Fault fault) const {
    fault.folder = Path();
    return fault;
}

std::string HeadOverTail(std::string_view fresh, std::string_view old, std::size_t written) {
    std::string bytes(fresh.substr(0, written));
    if (written < old.size()) bytes += old.substr(written);
    return bytes;
}

int PiecesOf(std::size_t length) { return static_cast<int>((length + pieceSize - 1) / pieceSize); }

std::size_t PieceEnd(std::size_t length, int pieces) {
    return std::min(length, static_cast<std::size_t>(pieces) * pieceSize);
}

std::string NameOfSaving(const testing::TestParamInfo<Saving>& info) {
    return std::string(info.param.what);
}

}  // namespace orvane::test
