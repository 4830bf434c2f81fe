#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "storage/file_dialog_model.h"
#include "tests/support/archive_folder.h"
#include "tests/support/prepared_answers.h"

// What an action of the File dialog says when it is refused. Nothing is changed then, neither on
// disk nor in the dialog.

namespace orvane {
namespace {

using test::Entry;
using test::Preamble;
using test::ThreeSheets;
using Model = FileDialogModel;
using Names = std::vector<std::string>;

constexpr auto none = std::nullopt;
const std::string nameIsUsed = "[OK] The file name has been used,please input another name.";

struct RefusalRow {
    const char* name;
    DialogStep (Model::*action)();
    std::string bytes;        // of the archive
    std::string currentName;  // empty: no sheet of it is open
    std::string sheetText;    // save mode where there is one
    std::optional<std::size_t> selected;
    std::string nameText;
    Names asked;
};

// clang-format off
const RefusalRow refusalRows[] = {
    {"open nothing", &Model::Open, ThreeSheets(), "", "", none, "first",
     {"[OK] Select a file to open"}},
    {"open of an empty archive", &Model::Open, Preamble(), "", "", none, "",
     {"[OK] Select a file to open"}},
    {"double click on nothing", &Model::DoubleClick, ThreeSheets(), "", "", none, "", {}},
    {"double click on nothing in save mode", &Model::DoubleClick, ThreeSheets(), "", "t", none, "",
     {}},
    {"rename nothing", &Model::Rename, ThreeSheets(), "", "", none, "",
     {"[OK] Please select a file to rename"}},
    {"rename to its own name", &Model::Rename, ThreeSheets(), "", "", 0, "first",
     {"[OK] Please modify the file name to rename"}},
    {"rename to its own name between blanks", &Model::Rename, ThreeSheets(), "", "", 0, " first ",
     {"[OK] Please modify the file name to rename"}},
    {"rename the open sheet to its own name", &Model::Rename, ThreeSheets(), "first", "", 0,
     "first", {"[OK] Please modify the file name to rename"}},
    {"rename a sheet without a name to none", &Model::Rename, Entry("", "t"), "x", "", 0, "  ",
     {"[OK] Please modify the file name to rename"}},
    {"rename to nothing", &Model::Rename, ThreeSheets(), "", "", 2, "",
     {"[OK] Please input a new file name to rename"}},
    {"rename to blanks", &Model::Rename, ThreeSheets(), "", "", 2, "   ",
     {"[OK] Please input a new file name to rename"}},
    {"rename to the name of another", &Model::Rename, ThreeSheets(), "", "", 0, "third",
     {nameIsUsed}},
    {"rename to the name of another between blanks", &Model::Rename, ThreeSheets(), "", "", 0,
     "  third ", {nameIsUsed}},
    {"rename the open sheet to the name of another", &Model::Rename, ThreeSheets(), "first", "",
     0, "third", {nameIsUsed}},
    {"rename the open sheet, No", &Model::Rename, ThreeSheets(), "first", "", 0, "new",
     {"[Confirm] The file is currently in open,do you want to rename it?"}},
    {"delete of an empty list", &Model::Delete, Preamble(), "", "", none, "", {}},
    {"delete nothing", &Model::Delete, ThreeSheets(), "", "", none, "second",
     {"[OK] Select a file to delete"}},
    {"delete the open sheet", &Model::Delete, ThreeSheets(), "second", "", 1, "",
     {"[OK] the file: second\nis currently in open and can not be deleted."}},
    // Where no sheet is open, one without a name counts as the open one.
    {"delete a sheet without a name while none is open", &Model::Delete, Entry("", "t"), "", "", 0,
     "", {"[OK] the file: \nis currently in open and can not be deleted."}},
    {"rename a sheet without a name while none is open, No", &Model::Rename, Entry("", "t"), "",
     "", 0, "new", {"[Confirm] The file is currently in open,do you want to rename it?"}},
    {"delete, No", &Model::Delete, ThreeSheets(), "first", "", 1, "",
     {"[Confirm] delete the file:\nsecond ?"}},
    {"save without a name", &Model::SaveAs, ThreeSheets(), "", "t", none, "",
     {"[OK] Please input a new file name to save."}},
    {"save under blanks", &Model::SaveAs, ThreeSheets(), "", "t", none, "   ",
     {"[OK] Please input a new file name to save."}},
    {"save under a name that is used", &Model::SaveAs, ThreeSheets(), "", "t", none, "second",
     {nameIsUsed}},
    {"save under one between blanks", &Model::SaveAs, ThreeSheets(), "", "t", none, " second  ",
     {nameIsUsed}},
    {"save under one in other letters", &Model::SaveAs, ThreeSheets(), "", "t", none, "seCOND",
     {nameIsUsed}},
    {"save over the open sheet", &Model::SaveAs, ThreeSheets(), "first", "t", 0, "first",
     {nameIsUsed}},
    {"move nothing up", &Model::MoveUp, ThreeSheets(), "", "", none, "first",
     {"[OK] Select a file for moving"}},
    {"move nothing down", &Model::MoveDown, ThreeSheets(), "", "", none, "first",
     {"[OK] Select a file for moving"}},
    {"move up in an empty list", &Model::MoveUp, Preamble(), "", "", none, "",
     {"[OK] Select a file for moving"}},
    {"move down in an empty list", &Model::MoveDown, Preamble(), "", "", none, "",
     {"[OK] Select a file for moving"}},
    {"move the first up", &Model::MoveUp, ThreeSheets(), "", "", 0, "first", {}},
    {"move the last down", &Model::MoveDown, ThreeSheets(), "", "", 2, "third", {}},
};
// clang-format on

TEST(FileDialogRefusals, SayWhyAndLeaveEverything) {
    const test::ArchiveFolder archive;
    test::PreparedAnswers questions;
    for (const RefusalRow& row : refusalRows) {
        SCOPED_TRACE(row.name);
        archive.Write(row.bytes);
        Model model(
            archive.Path(), row.currentName, row.sheetText,
            [](const std::string& name) { ADD_FAILURE() << "renamed to " << name; }, questions);
        model.Start();
        const Names rows = model.Rows();
        model.Select(row.selected);
        model.nameText = row.nameText;
        // Only questions use it up.
        questions.answers = {Answer::no};
        // A refused action does not even touch the file: what another program wrote meanwhile stays
        // unread and as old as it is.
        const std::string meanwhile = Entry("earlier", "") + row.bytes + Entry("later", "");
        archive.Write(meanwhile);
        archive.Age();

        EXPECT_EQ((model.*row.action)(), DialogStep::stay);
        EXPECT_EQ(questions.Asked(), row.asked);
        EXPECT_EQ(archive.Read(), meanwhile);
        EXPECT_TRUE(archive.IsAged());
        EXPECT_EQ(model.Rows(), rows);
        EXPECT_EQ(model.SelectedRow(), row.selected);
        EXPECT_EQ(model.nameText, row.nameText);
        EXPECT_EQ(model.currentName, row.currentName);
        EXPECT_EQ(model.sheetText, row.sheetText);
    }
}

}  // namespace
}  // namespace orvane
