#include "storage/file_dialog_model.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/archive_folder.h"
#include "tests/support/prepared_answers.h"

namespace orvane {
namespace {

using test::Entry;
using test::Preamble;
using test::ThreeSheets;
using Names = std::vector<std::string>;

constexpr auto none = std::nullopt;

class FileDialogModelTest : public testing::Test {
protected:
    FileDialogModelTest() { archive.Write(ThreeSheets()); }

    FileDialogModel OpenMode(const std::string& currentName = "") {
        return Started(currentName, "");
    }
    FileDialogModel SaveMode(const std::string& text = "text") { return Started("current", text); }

    test::ArchiveFolder archive;
    test::PreparedAnswers questions;
    Names renames;

private:
    FileDialogModel Started(const std::string& currentName, const std::string& text) {
        FileDialogModel model(
            archive.Path(), currentName, text,
            [this](const std::string& name) { renames.push_back(name); }, questions);
        model.Start();
        return model;
    }
};

// Starting

TEST_F(FileDialogModelTest, ListsTheNamesInFileOrderWithNoneSelected) {
    for (const std::string& text : {std::string(), std::string("text"), std::string(" ")}) {
        SCOPED_TRACE(text);
        FileDialogModel model(archive.Path(), "first", text, {}, questions);
        EXPECT_EQ(model.IsSaveMode(), !text.empty());
        model.Start();
        EXPECT_EQ(model.Rows(), (Names{"first", "second", "third"}));
        EXPECT_EQ(model.SelectedRow(), none);
        EXPECT_EQ(model.nameText, "");
        EXPECT_EQ(model.currentName, "first");
        EXPECT_EQ(model.sheetText, text);
    }
    EXPECT_EQ(archive.Read(), ThreeSheets());
    EXPECT_EQ(questions.Asked(), Names{});
}

TEST_F(FileDialogModelTest, WorksOnWithAnEmptyListWhereTheArchiveCanNotBeLoaded) {
    for (const bool isBlocked : {false, true}) {
        SCOPED_TRACE(isBlocked);
        archive.Remove();
        if (isBlocked) archive.Block();
        FileDialogModel model = OpenMode();
        EXPECT_EQ(model.Rows(), Names{});
        EXPECT_EQ(model.Open(), DialogStep::stay);
        EXPECT_EQ(questions.Asked(), Names{"[OK] Select a file to open"});
        EXPECT_EQ(std::filesystem::exists(archive.Path()), isBlocked);
    }
}

TEST_F(FileDialogModelTest, CopiesTheNameOfASelectedRowInEitherMode) {
    for (FileDialogModel model : {OpenMode(), SaveMode()}) {
        EXPECT_EQ(model.Select(1), DialogStep::refresh);
        EXPECT_EQ(model.nameText, "second");
        EXPECT_EQ(model.SelectedRow(), 1U);
        model.nameText = "typed";
        model.Select(none);
        EXPECT_EQ(model.nameText, "typed");
        EXPECT_EQ(model.SelectedRow(), none);
    }
}

// Open

TEST_F(FileDialogModelTest, OpensTheSelectedSheet) {
    for (const auto action : {&FileDialogModel::Open, &FileDialogModel::DoubleClick}) {
        FileDialogModel model = OpenMode("first");
        model.Select(2);
        EXPECT_EQ((model.*action)(), DialogStep::accept);
        EXPECT_EQ(model.currentName, "third");
        EXPECT_EQ(model.sheetText, "3\n3");
        EXPECT_EQ(archive.Read(), ThreeSheets());
        EXPECT_EQ(questions.Asked(), Names{});
    }
}

TEST_F(FileDialogModelTest, OpensWhatTheListSaysAndNotWhatWasTyped) {
    FileDialogModel model = OpenMode();
    model.Select(1);
    model.nameText = "third";
    EXPECT_EQ(model.Open(), DialogStep::accept);
    EXPECT_EQ(model.currentName, "second");
    EXPECT_EQ(model.sheetText, "2;2");
}

TEST_F(FileDialogModelTest, OpensASheetThatIsGoneAsAnEmptyOne) {
    FileDialogModel model = OpenMode("first");
    model.Select(1);
    archive.Write(Preamble());
    EXPECT_EQ(model.Open(), DialogStep::accept);
    EXPECT_EQ(model.currentName, "second");
    EXPECT_EQ(model.sheetText, "");
    EXPECT_EQ(archive.Read(), Preamble());
}

TEST_F(FileDialogModelTest, AcceptsWithTheOldNameWhereTheArchiveCanNotBeLoaded) {
    FileDialogModel model = OpenMode("first");
    model.Select(1);
    archive.Remove();
    EXPECT_EQ(model.Open(), DialogStep::accept);
    EXPECT_EQ(model.currentName, "first");
    EXPECT_EQ(model.sheetText, "");
    EXPECT_FALSE(std::filesystem::exists(archive.Path()));
}

TEST_F(FileDialogModelTest, TakesTheClickedSheetInSaveModeAndStoresNothing) {
    FileDialogModel model = SaveMode();
    model.Select(1);
    EXPECT_EQ(model.DoubleClick(), DialogStep::accept);
    EXPECT_EQ(model.currentName, "second");
    EXPECT_EQ(archive.Read(), ThreeSheets());
    EXPECT_EQ(questions.Asked(), Names{});
}

// Rename

TEST_F(FileDialogModelTest, RenamesAtOnceInItsPlace) {
    FileDialogModel model = OpenMode("third");
    model.Select(1);
    model.nameText = "  a new name ";
    EXPECT_EQ(model.Rename(), DialogStep::refresh);
    EXPECT_EQ(model.Rows(), (Names{"first", "a new name", "third"}));
    EXPECT_EQ(model.SelectedRow(), 1U);
    EXPECT_EQ(model.nameText, "a new name");
    EXPECT_EQ(model.currentName, "third");
    EXPECT_EQ(archive.Read(), Preamble() + Entry("first", "1") + Entry("a new name", "2;2") +
                                  Entry("third", "3\n3"));
    EXPECT_EQ(questions.Asked(), Names{});
    EXPECT_EQ(renames, Names{});
}

TEST_F(FileDialogModelTest, RenamesBesideANameThatDiffersInLetterCaseOnly) {
    FileDialogModel model = OpenMode();
    model.Select(0);
    model.nameText = "Second";
    EXPECT_EQ(model.Rename(), DialogStep::refresh);
    model.Select(2);
    model.nameText = "THIRD";
    EXPECT_EQ(model.Rename(), DialogStep::refresh);
    EXPECT_EQ(model.Rows(), (Names{"Second", "second", "THIRD"}));
}

TEST_F(FileDialogModelTest, TellsTheWindowWhenTheOpenSheetIsRenamed) {
    FileDialogModel model = OpenMode("second");
    model.Select(1);
    model.nameText = "new";
    questions.answers = {Answer::yes};
    EXPECT_EQ(model.Rename(), DialogStep::refresh);
    EXPECT_EQ(questions.Asked(),
              Names{"[Confirm] The file is currently in open,do you want to rename it?"});
    EXPECT_EQ(renames, Names{"new"});
    EXPECT_EQ(model.currentName, "second");
    EXPECT_EQ(archive.Read(),
              Preamble() + Entry("first", "1") + Entry("new", "2;2") + Entry("third", "3\n3"));

    // The dialog knows it by its old name only: it is renamed unasked and can be deleted.
    model.nameText = "newer";
    EXPECT_EQ(model.Rename(), DialogStep::refresh);
    EXPECT_EQ(questions.Asked(), Names{});
    EXPECT_EQ(renames, Names{"new"});
    questions.answers = {Answer::yes};
    EXPECT_EQ(model.Delete(), DialogStep::refresh);
    EXPECT_EQ(questions.Asked(), Names{"[Confirm] delete the file:\nnewer ?"});
    EXPECT_EQ(archive.Read(), Preamble() + Entry("first", "1") + Entry("third", "3\n3"));
}

TEST_F(FileDialogModelTest, ReplacesTheRowOfASheetThatIsGone) {
    FileDialogModel model = OpenMode("second");
    model.Select(1);
    model.nameText = "new";
    archive.Write(Preamble());
    questions.answers = {Answer::yes};
    EXPECT_EQ(model.Rename(), DialogStep::refresh);
    EXPECT_EQ(model.Rows(), (Names{"first", "new", "third"}));
    EXPECT_EQ(renames, Names{"new"});
    EXPECT_EQ(archive.Read(), Preamble());
}

TEST_F(FileDialogModelTest, RenamesNothingWhereTheArchiveCanNotBeLoaded) {
    FileDialogModel model = OpenMode("second");
    model.Select(1);
    model.nameText = "new";
    archive.Remove();
    questions.answers = {Answer::yes};
    EXPECT_EQ(model.Rename(), DialogStep::stay);
    EXPECT_EQ(model.Rows(), (Names{"first", "second", "third"}));
    EXPECT_EQ(renames, Names{});
    EXPECT_FALSE(std::filesystem::exists(archive.Path()));
}

TEST_F(FileDialogModelTest, TakesANameThatHoldsTheTextMark) {
    FileDialogModel model = OpenMode();
    model.Select(1);
    model.nameText = "a\xE6z";
    EXPECT_EQ(model.Rename(), DialogStep::refresh);
    EXPECT_EQ(model.Rows(), (Names{"first", "a\xE6z", "third"}));
    // Read anew, its name ends at the first mark and its text starts with the rest.
    FileDialogModel next = OpenMode();
    EXPECT_EQ(next.Rows(), (Names{"first", "a", "third"}));
    next.Select(1);
    next.Open();
    EXPECT_EQ(next.sheetText,
              "z\xE6"
              "2;2");
}

// Delete

TEST_F(FileDialogModelTest, SelectsTheRowThatTakesThePlaceOfADeletedOne) {
    struct Row {
        std::size_t deleted;
        Names rows;
        std::size_t selected;
        std::string bytes;
    };
    const Row rows[] = {
        {0, {"second", "third"}, 0, Entry("second", "2;2") + Entry("third", "3\n3")},
        {1, {"first", "third"}, 1, Entry("first", "1") + Entry("third", "3\n3")},
        {2, {"first", "second"}, 1, Entry("first", "1") + Entry("second", "2;2")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.deleted);
        archive.Write(ThreeSheets());
        FileDialogModel model = OpenMode();
        model.Select(row.deleted);
        const std::string name = model.nameText;
        questions.answers = {Answer::yes};
        EXPECT_EQ(model.Delete(), DialogStep::refresh);
        EXPECT_EQ(questions.Asked(), Names{"[Confirm] delete the file:\n" + name + " ?"});
        EXPECT_EQ(model.Rows(), row.rows);
        EXPECT_EQ(model.SelectedRow(), row.selected);
        EXPECT_EQ(model.nameText, row.rows[row.selected]);
        EXPECT_EQ(archive.Read(), Preamble() + row.bytes);
    }
}

TEST_F(FileDialogModelTest, SelectsNothingWhenTheOnlyRowIsDeleted) {
    archive.Write(Preamble() + Entry("only", "text"));
    FileDialogModel model = OpenMode();
    model.Select(0);
    questions.answers = {Answer::yes};
    EXPECT_EQ(model.Delete(), DialogStep::refresh);
    EXPECT_EQ(model.Rows(), Names{});
    EXPECT_EQ(model.SelectedRow(), none);
    EXPECT_EQ(archive.Read(), Preamble());
    questions.Asked();

    EXPECT_EQ(model.Delete(), DialogStep::stay);
    EXPECT_EQ(questions.Asked(), Names{});
}

TEST_F(FileDialogModelTest, DeletesTheRowOfASheetThatIsGone) {
    FileDialogModel model = OpenMode();
    model.Select(0);
    archive.Write(Preamble() + Entry("other", "kept"));
    questions.answers = {Answer::yes};
    EXPECT_EQ(model.Delete(), DialogStep::refresh);
    EXPECT_EQ(model.Rows(), (Names{"second", "third"}));
    EXPECT_EQ(archive.Read(), Preamble() + Entry("other", "kept"));
}

TEST_F(FileDialogModelTest, DeletesNothingWhereTheArchiveCanNotBeLoaded) {
    FileDialogModel model = OpenMode();
    model.Select(0);
    archive.Remove();
    questions.answers = {Answer::yes};
    EXPECT_EQ(model.Delete(), DialogStep::stay);
    EXPECT_EQ(model.Rows(), (Names{"first", "second", "third"}));
    EXPECT_EQ(model.SelectedRow(), 0U);
    EXPECT_FALSE(std::filesystem::exists(archive.Path()));
}

// Save as

TEST_F(FileDialogModelTest, StoresTheSheetBehindAllOthers) {
    FileDialogModel model = SaveMode("a;b\nc");
    model.nameText = "  my sheet ";
    EXPECT_EQ(model.SaveAs(), DialogStep::accept);
    EXPECT_EQ(model.currentName, "my sheet");
    EXPECT_EQ(archive.Read(), ThreeSheets() + Entry("my sheet", "a;b\nc"));
    EXPECT_EQ(questions.Asked(), Names{});
}

TEST_F(FileDialogModelTest, RemovesBlanksAloneFromTheEndsOfAName) {
    FileDialogModel model = SaveMode();
    model.nameText = " \ta  b\t ";
    EXPECT_EQ(model.SaveAs(), DialogStep::accept);
    EXPECT_EQ(model.currentName, "\ta  b\t");
}

TEST_F(FileDialogModelTest, StoresInAnEmptyFileToo) {
    archive.Write("");
    FileDialogModel model = SaveMode(" ");
    model.nameText = "blank";
    EXPECT_EQ(model.SaveAs(), DialogStep::accept);
    EXPECT_EQ(archive.Read(), Entry("blank", " "));
}

TEST_F(FileDialogModelTest, AcceptsASaveThatCouldNotBeStored) {
    FileDialogModel model = SaveMode();
    model.nameText = "new";
    archive.Remove();
    EXPECT_EQ(model.SaveAs(), DialogStep::accept);
    EXPECT_EQ(model.currentName, "new");
    EXPECT_FALSE(std::filesystem::exists(archive.Path()));
}

TEST_F(FileDialogModelTest, LooksForAUsedNameInTheListAndNotInTheFile) {
    FileDialogModel model = SaveMode("mine");
    archive.Write(Preamble() + Entry("new", "theirs"));
    model.nameText = "new";
    EXPECT_EQ(model.SaveAs(), DialogStep::accept);
    EXPECT_EQ(archive.Read(), Preamble() + Entry("new", "theirs") + Entry("new", "mine"));
}

TEST(IsSameNameInAnyCase, KnowsTheLettersOfTheCodePage) {
    struct Row {
        const char* one;
        const char* other;
        bool isSame;
    };
    constexpr Row rows[] = {
        {"", "", true},
        {"abc", "ABC", true},
        {"Abc 1", "aBC 1", true},
        {"abc", "abcd", false},
        {"abc", "abd", false},
        {"az", "AZ", true},
        {"@[", "`{", false},                     // the neighbours of A and Z
        {"\xC0\xC4\xD6", "\xE0\xE4\xF6", true},  // accented letters
        {"\xD8\xDE", "\xF8\xFE", true},
        {"\xD7", "\xF7", false},  // times and divide
        {"\xDF", "\xFF", false},  // sharp s has no capital, and small y has another
        {"\x9F", "\xFF", true},   // y with two dots
        {"\x8A", "\x9A", true},   // s, oe and z
        {"\x8C", "\x9C", true},
        {"\x8E", "\x9E", true},
        {"\x8B", "\x9B", false},  // single quotation marks
        {"\x8D", "\x9D", false},  // no characters
        {"\x80", "\x90", false},
        {"\xAA", "\xBA", false},  // ordinal signs
        {"\xB5", "\xC5", false},  // micro
        {"e", "\xE9", false},     // an accent counts
    };
    for (const auto& [one, other, isSame] : rows) {
        SCOPED_TRACE(testing::PrintToString(std::string(one)) + " " + other);
        EXPECT_EQ(IsSameNameInAnyCase(one, other), isSame);
        EXPECT_EQ(IsSameNameInAnyCase(other, one), isSame);
    }
}

// Moving

TEST_F(FileDialogModelTest, MovesARowInBothDirections) {
    FileDialogModel model = OpenMode("second");
    model.Select(2);
    EXPECT_EQ(model.MoveUp(), DialogStep::refresh);
    EXPECT_EQ(model.Rows(), (Names{"first", "third", "second"}));
    EXPECT_EQ(model.SelectedRow(), 1U);
    EXPECT_EQ(model.nameText, "third");
    EXPECT_EQ(archive.Read(),
              Preamble() + Entry("first", "1") + Entry("third", "3\n3") + Entry("second", "2;2"));
    EXPECT_EQ(model.MoveUp(), DialogStep::refresh);
    EXPECT_EQ(model.Rows(), (Names{"third", "first", "second"}));
    EXPECT_EQ(model.SelectedRow(), 0U);
    EXPECT_EQ(model.MoveUp(), DialogStep::stay);

    EXPECT_EQ(model.MoveDown(), DialogStep::refresh);
    EXPECT_EQ(model.MoveDown(), DialogStep::refresh);
    EXPECT_EQ(model.SelectedRow(), 2U);
    EXPECT_EQ(model.MoveDown(), DialogStep::stay);
    EXPECT_EQ(model.Rows(), (Names{"first", "second", "third"}));
    EXPECT_EQ(archive.Read(), ThreeSheets());
    EXPECT_EQ(questions.Asked(), Names{});
}

TEST_F(FileDialogModelTest, MovesInSaveModeToo) {
    FileDialogModel model = SaveMode();
    model.Select(0);
    EXPECT_EQ(model.MoveDown(), DialogStep::refresh);
    EXPECT_EQ(OpenMode().Rows(), (Names{"second", "first", "third"}));
}

TEST_F(FileDialogModelTest, KeepsTheNewOrderWhenItIsCancelled) {
    {
        FileDialogModel model = OpenMode();
        model.Select(0);
        model.MoveDown();
    }
    EXPECT_EQ(OpenMode().Rows(), (Names{"second", "first", "third"}));
}

TEST_F(FileDialogModelTest, MovesNoRowWhereTheFileDidNotMoveItsSheet) {
    FileDialogModel model = OpenMode();
    const std::string onlyOther = Preamble() + Entry("other", "text");
    for (const std::string& bytes : {onlyOther, Entry("second", "alone")}) {
        SCOPED_TRACE(bytes);
        archive.Write(bytes);
        model.Select(1);
        for (const auto action : {&FileDialogModel::MoveUp, &FileDialogModel::MoveDown}) {
            EXPECT_EQ((model.*action)(), DialogStep::stay);
            EXPECT_EQ(model.Rows(), (Names{"first", "second", "third"}));
            EXPECT_EQ(model.SelectedRow(), 1U);
            EXPECT_EQ(archive.Read(), bytes);
        }
    }
    archive.Remove();
    EXPECT_EQ(model.MoveUp(), DialogStep::stay);
    EXPECT_EQ(model.MoveDown(), DialogStep::stay);
    EXPECT_EQ(model.Rows(), (Names{"first", "second", "third"}));
    EXPECT_FALSE(std::filesystem::exists(archive.Path()));
}

// A file that may not be written, and many sheets

TEST_F(FileDialogModelTest, GoesOnAsIfAFileThatMayOnlyBeReadHadBeenWritten) {
    std::filesystem::permissions(archive.Path(), std::filesystem::perms(0444));
    const test::WithoutRights rights;
    FileDialogModel model = OpenMode();
    EXPECT_EQ(model.Rows(), (Names{"first", "second", "third"}));
    model.Select(0);
    EXPECT_EQ(model.MoveDown(), DialogStep::refresh);
    model.nameText = "new";
    EXPECT_EQ(model.Rename(), DialogStep::refresh);
    model.Select(2);
    questions.answers = {Answer::yes};
    EXPECT_EQ(model.Delete(), DialogStep::refresh);
    EXPECT_EQ(model.Rows(), (Names{"second", "new"}));
    model.Select(0);
    EXPECT_EQ(model.Open(), DialogStep::accept);
    EXPECT_EQ(model.sheetText, "2;2");

    FileDialogModel saving = SaveMode();
    saving.nameText = "fourth";
    EXPECT_EQ(saving.SaveAs(), DialogStep::accept);
    EXPECT_EQ(archive.Read(), ThreeSheets());
}

TEST_F(FileDialogModelTest, TakesSheetsOfAnyNumberAndNamesOfAnyBytes) {
    std::string bytes = Preamble() + Entry("", "no name") + Entry("a\r\nb\x01", "two lines");
    for (int number = 0; number < 20'000; ++number) bytes += Entry(std::to_string(number), "text");
    archive.Write(bytes);
    FileDialogModel model = OpenMode("x");
    ASSERT_EQ(model.Rows().size(), 20'002U);
    model.Select(0);
    EXPECT_EQ(model.nameText, "");
    model.Open();
    EXPECT_EQ(model.sheetText, "no name");
    model.Select(1);
    EXPECT_EQ(model.nameText, "a\r\nb\x01");
    model.Open();
    EXPECT_EQ(model.sheetText, "two lines");
    model.Select(20'001);
    model.nameText = "last";
    EXPECT_EQ(model.Rename(), DialogStep::refresh);
    EXPECT_EQ(OpenMode().Rows().back(), "last");
}

// Sample files

class SamplesDialogModelTest : public testing::Test {
protected:
    SamplesDialogModelTest() { archive.Write(ThreeSheets()); }

    test::ArchiveFolder archive;
    test::PreparedAnswers questions;
};

TEST_F(SamplesDialogModelTest, OpensTheSelectedSample) {
    for (const auto action : {&SamplesDialogModel::Open, &SamplesDialogModel::DoubleClick}) {
        SamplesDialogModel model(archive.Path(), questions);
        model.Start();
        EXPECT_EQ(model.Rows(), (Names{"first", "second", "third"}));
        EXPECT_EQ(model.SelectedRow(), none);
        model.Select(1);
        EXPECT_EQ((model.*action)(), DialogStep::accept);
        EXPECT_EQ(model.chosenName, "second");
        EXPECT_EQ(model.chosenText, "2;2");
    }
    EXPECT_EQ(archive.Read(), ThreeSheets());
    EXPECT_EQ(questions.Asked(), Names{});
}

TEST_F(SamplesDialogModelTest, SaysThatNothingIsSelectedAlsoAfterADoubleClick) {
    SamplesDialogModel model(archive.Path(), questions);
    model.Start();
    for (const auto action : {&SamplesDialogModel::Open, &SamplesDialogModel::DoubleClick}) {
        EXPECT_EQ((model.*action)(), DialogStep::stay);
        EXPECT_EQ(questions.Asked(), Names{"[OK] Select a file to open"});
    }
}

TEST_F(SamplesDialogModelTest, AcceptsWhatCouldNotBeRead) {
    SamplesDialogModel model(archive.Path(), questions);
    model.Start();
    model.Select(1);
    archive.Write(Preamble());
    EXPECT_EQ(model.Open(), DialogStep::accept);
    EXPECT_EQ(model.chosenName, "second");
    EXPECT_EQ(model.chosenText, "");

    archive.Write(ThreeSheets());
    SamplesDialogModel other(archive.Path(), questions);
    other.Start();
    other.Select(1);
    archive.Remove();
    EXPECT_EQ(other.Open(), DialogStep::accept);
    EXPECT_EQ(other.chosenName, "");
    EXPECT_EQ(other.chosenText, "");
    EXPECT_FALSE(std::filesystem::exists(archive.Path()));
}

}  // namespace
}  // namespace orvane
