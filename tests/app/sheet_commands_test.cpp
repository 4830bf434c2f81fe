#include "app/sheet_commands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "locus/locus_store.h"
#include "storage/archive_file.h"
#include "tests/support/archive_folder.h"
#include "tests/support/played_dialogs.h"
#include "tests/support/prepared_answers.h"

namespace orvane {
namespace {

using test::Entry;
using test::Preamble;
using Texts = std::vector<std::string>;

const std::string saveYesNo = "[Yes No] save the calculation?";
const std::string saveYesNoCancel = "[Yes No Cancel] save the calculation?";

bool Cancel(FileDialogModel&) { return false; }
bool CancelSamples(SamplesDialogModel&) { return false; }

auto OpenRow(std::size_t row) {
    return [row](auto& model) {
        model.Select(row);
        return model.Open() == DialogStep::accept;
    };
}

auto SaveUnder(std::string name) {
    return [name](FileDialogModel& model) {
        model.nameText = name;
        return model.SaveAs() == DialogStep::accept;
    };
}

void AddCurve() { locusStore.Add(0, LocusKind::xy); }

class SheetCommandsTest : public testing::Test {
protected:
    SheetCommandsTest() {
        sheet.userFilePath = user.Path();
        sheet.sampleFilePath = samples.Path();
        user.Write(Users());
        samples.Write(Samples());
        locusStore.Clear();
        AddCurve();
    }
    ~SheetCommandsTest() override {
        locusStore.Clear();
        EXPECT_TRUE(questions.answers.empty());
        EXPECT_FALSE(dialogs.play);
        EXPECT_FALSE(dialogs.playSamples);
    }

    static std::string Users() { return Preamble() + Entry("one", "1\r\n1") + Entry("two", "2"); }
    static std::string Samples() { return Preamble() + Entry("demo", "3;3"); }

    void OpenUserRow(std::size_t row) {
        dialogs.play = OpenRow(row);
        commands.Open();
    }
    void OpenSampleRow(std::size_t row) {
        dialogs.playSamples = OpenRow(row);
        commands.OpenSamples();
    }
    void ExpectSheet(std::int32_t archiveKind, const std::string& name, const std::string& saved) {
        EXPECT_EQ(sheet.archiveKind, archiveKind);
        EXPECT_EQ(sheet.sheetName, name);
        EXPECT_EQ(sheet.savedText, saved);
    }

    const test::ArchiveFolder user;
    const test::ArchiveFolder samples;
    CurrentSheet sheet;
    test::PlainEditor editor;
    test::PlainTitle title;
    test::PreparedAnswers questions;
    test::PlayedDialogs dialogs{questions};
    SheetCommands commands{sheet, {editor, title, dialogs, questions}};
};

// The prompt of New, Open and Open samples

TEST_F(SheetCommandsTest, AsksBeforeAnEditedSheetGoes) {
    struct Row {
        const char* name;
        std::function<void()> run;
    };
    const Row rows[] = {
        {"new", [&] { commands.New(); }},
        {"open", [&] { OpenUserRow(1); }},
        {"samples", [&] { OpenSampleRow(0); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        user.Write(Users());
        editor.text = "1\n1";
        commands.Reopen(userArchive, "one");
        row.run();
        EXPECT_EQ(questions.Asked(), Texts{});  // nothing was edited

        commands.Reopen(userArchive, "one");
        editor.text = "edited";
        questions.answers = {Answer::no};
        row.run();
        EXPECT_EQ(questions.Asked(), Texts{saveYesNo});
        EXPECT_EQ(user.Read(), Users());
        EXPECT_NE(editor.text, "edited");

        commands.Reopen(userArchive, "one");
        editor.text = "edited";
        questions.answers = {Answer::yes};
        row.run();
        EXPECT_EQ(questions.Asked(), Texts{saveYesNo});
        EXPECT_EQ(user.Read(), Preamble() + Entry("one", "edited") + Entry("two", "2"));
        EXPECT_NE(editor.text, "edited");
    }
}

TEST_F(SheetCommandsTest, AsksNoMoreWhenAnEditIsRevertedByHand) {
    OpenUserRow(0);
    editor.text = "1\n12";
    EXPECT_TRUE(commands.IsModified());
    editor.text = "1\n1";
    EXPECT_FALSE(commands.IsModified());
    commands.New();
    EXPECT_EQ(questions.Asked(), Texts{});
}

// New

TEST_F(SheetCommandsTest, StartsANewCalculation) {
    OpenUserRow(0);
    AddCurve();
    commands.New();
    ExpectSheet(noArchive, "", "");
    EXPECT_EQ(editor.text, "");
    EXPECT_EQ(title.title, "Orvane: new calculation");
    EXPECT_TRUE(locusStore.IsEmpty());
    EXPECT_FALSE(commands.IsModified());
    EXPECT_EQ(sheet.userFilePath, user.Path());
}

TEST_F(SheetCommandsTest, LosesTheTextWhenAFirstSaveIsCancelledAfterYes) {
    commands.New();
    editor.text = "typed";
    questions.answers = {Answer::yes};
    dialogs.play = Cancel;
    commands.New();
    EXPECT_EQ(dialogs.shown, (std::vector<Texts>{{user.Path(), "", "typed"}}));
    ExpectSheet(noArchive, "", "");
    EXPECT_EQ(editor.text, "");
    EXPECT_EQ(title.title, "Orvane: new calculation");
    EXPECT_EQ(user.Read(), Users());
}

TEST_F(SheetCommandsTest, SavesAnEditedSampleUnderItsNewNameBeforeItStartsANewOne) {
    OpenSampleRow(0);
    editor.text = "edited";
    questions.answers = {Answer::yes};
    dialogs.play = SaveUnder("mine");
    commands.New();
    EXPECT_EQ(user.Read(), Users() + Entry("mine", "edited"));
    EXPECT_EQ(samples.Read(), Samples());
    ExpectSheet(noArchive, "", "");
}

// Open

TEST_F(SheetCommandsTest, OpensASheetAsTheEditorGivesItBack) {
    OpenUserRow(0);
    EXPECT_EQ(dialogs.shown, (std::vector<Texts>{{user.Path(), ""}}));
    EXPECT_EQ(editor.text, "1\n1");
    ExpectSheet(userArchive, "one", "1\n1");
    EXPECT_EQ(title.title, "Orvane: one");
    EXPECT_TRUE(locusStore.IsEmpty());
    EXPECT_FALSE(commands.IsModified());
    EXPECT_EQ(user.Read(), Users());
}

TEST_F(SheetCommandsTest, TellsTheDialogTheOpenSheetOfItsArchiveOnly) {
    OpenUserRow(0);
    OpenUserRow(1);
    OpenSampleRow(0);
    OpenUserRow(1);
    EXPECT_EQ(dialogs.shown,
              (std::vector<Texts>{
                  {user.Path(), ""}, {user.Path(), "one"}, {samples.Path()}, {user.Path(), ""}}));
}

TEST_F(SheetCommandsTest, ChangesNothingWhenADialogIsCancelled) {
    OpenUserRow(1);
    AddCurve();
    editor.text = "edited";
    questions.answers = {Answer::no, Answer::no};
    dialogs.play = Cancel;
    commands.Open();
    dialogs.playSamples = CancelSamples;
    commands.OpenSamples();
    dialogs.play = Cancel;
    EXPECT_FALSE(commands.SaveAs());
    EXPECT_EQ(questions.Asked(), (Texts{saveYesNo, saveYesNo}));
    ExpectSheet(userArchive, "two", "2");
    EXPECT_EQ(editor.text, "edited");
    EXPECT_EQ(title.title, "Orvane: two");
    EXPECT_EQ(locusStore.Count(), 1);
    EXPECT_EQ(user.Read(), Users());
}

TEST_F(SheetCommandsTest, ShowsTheOpenSheetEmptyWhereTheDialogCouldNotReadAnother) {
    OpenUserRow(1);
    dialogs.play = [this](FileDialogModel& model) {
        model.Select(0);
        user.Remove();
        return model.Open() == DialogStep::accept;
    };
    commands.Open();
    ExpectSheet(userArchive, "two", "");
    EXPECT_EQ(editor.text, "");
}

TEST_F(SheetCommandsTest, ShowsANewNameOfTheOpenSheetWhileTheDialogIsOpen) {
    OpenUserRow(0);
    editor.text = "edited";
    questions.answers = {Answer::no, Answer::yes};
    dialogs.play = [this](FileDialogModel& model) {
        model.Select(0);
        model.nameText = "uno";
        EXPECT_EQ(model.Rename(), DialogStep::refresh);
        EXPECT_EQ(title.title, "Orvane: uno");
        EXPECT_EQ(sheet.sheetName, "uno");
        return false;
    };
    commands.Open();
    ExpectSheet(userArchive, "uno", "1\n1");
    EXPECT_EQ(editor.text, "edited");
    // And is saved under it.
    EXPECT_TRUE(commands.Save());
    EXPECT_EQ(user.Read(), Preamble() + Entry("uno", "edited") + Entry("two", "2"));
}

TEST_F(SheetCommandsTest, SetsNothingButNameAndTitleOfARenamedSheet) {
    OpenUserRow(0);
    AddCurve();
    editor.text = "edited";
    commands.SetSheetName("new name");
    ExpectSheet(userArchive, "new name", "1\n1");
    EXPECT_EQ(title.title, "Orvane: new name");
    EXPECT_EQ(editor.text, "edited");
    EXPECT_EQ(locusStore.Count(), 1);
    EXPECT_EQ(user.Read(), Users());
}

TEST_F(SheetCommandsTest, TellsTheDialogTheNameThatASheetGotFromThePrompt) {
    editor.text = "typed";
    questions.answers = {Answer::yes};
    dialogs.play = [this](FileDialogModel& model) {
        dialogs.play = Cancel;  // the dialog that opens comes next
        return SaveUnder("mine")(model);
    };
    commands.Open();
    EXPECT_EQ(dialogs.shown,
              (std::vector<Texts>{{user.Path(), "", "typed"}, {user.Path(), "mine"}}));
    ExpectSheet(userArchive, "mine", "typed");
}

TEST_F(SheetCommandsTest, OpensASheetWithoutANameWhereTheDialogCouldReadNone) {
    OpenSampleRow(0);
    dialogs.play = [this](FileDialogModel& model) {
        model.Select(0);
        user.Remove();
        return model.Open() == DialogStep::accept;
    };
    commands.Open();
    ExpectSheet(userArchive, "", "");
    EXPECT_EQ(editor.text, "");
    EXPECT_EQ(title.title, "Orvane: ");
    EXPECT_TRUE(locusStore.IsEmpty());
}

// Open samples

TEST_F(SheetCommandsTest, KeepsTheCurvesWhenASampleIsOpened) {
    OpenSampleRow(0);
    EXPECT_EQ(editor.text, "3;3");
    ExpectSheet(sampleArchive, "demo", "3;3");
    EXPECT_EQ(title.title, "Orvane: demo");
    EXPECT_EQ(locusStore.Count(), 1);
    EXPECT_EQ(samples.Read(), Samples());
}

// Save

TEST_F(SheetCommandsTest, SavesInPlaceWithoutADialog) {
    OpenUserRow(0);
    AddCurve();
    for (const std::string text : {"longer than before", "", "x"}) {
        SCOPED_TRACE(text);
        editor.text = text;
        EXPECT_TRUE(commands.Save());
        EXPECT_EQ(user.Read(), Preamble() + Entry("one", text) + Entry("two", "2"));
        ExpectSheet(userArchive, "one", text);
    }
    EXPECT_EQ(dialogs.shown.size(), 1U);  // the one that opened it
    EXPECT_EQ(questions.Asked(), Texts{});
    EXPECT_EQ(locusStore.Count(), 1);
}

TEST_F(SheetCommandsTest, AsksForANameInTheUserArchiveWhenASampleIsSaved) {
    OpenSampleRow(0);
    editor.text = "3;4";
    dialogs.play = SaveUnder("demo");
    EXPECT_TRUE(commands.Save());
    EXPECT_EQ(dialogs.shown.back(), (Texts{user.Path(), "", "3;4"}));
    ExpectSheet(userArchive, "demo", "3;4");
    EXPECT_EQ(title.title, "Orvane: demo");
    EXPECT_EQ(samples.Read(), Samples());
    EXPECT_EQ(user.Read(), Users() + Entry("demo", "3;4"));
    EXPECT_EQ(locusStore.Count(), 1);
}

TEST_F(SheetCommandsTest, FailsOnlyWhereTheNameDialogIsCancelled) {
    editor.text = "typed";
    dialogs.play = Cancel;
    EXPECT_FALSE(commands.Save());
    ExpectSheet(noArchive, "", "");
    EXPECT_TRUE(commands.IsModified());
}

TEST_F(SheetCommandsTest, CountsASheetAsSavedWhoseEntryIsGone) {
    OpenUserRow(0);
    editor.text = "edited";
    user.Write(Preamble());
    EXPECT_TRUE(commands.Save());
    EXPECT_EQ(user.Read(), Preamble());
    ExpectSheet(userArchive, "one", "edited");
}

TEST_F(SheetCommandsTest, KeepsAskingForASheetWhoseArchiveCanNotBeLoaded) {
    OpenUserRow(0);
    editor.text = "edited";
    user.Remove();
    EXPECT_TRUE(commands.Save());
    ExpectSheet(userArchive, "one", "1\n1");
    EXPECT_TRUE(commands.IsModified());
    EXPECT_FALSE(std::filesystem::exists(user.Path()));

    questions.answers = {Answer::yes};
    EXPECT_TRUE(commands.CloseRequest());
}

TEST_F(SheetCommandsTest, CountsASheetAsSavedWhoseArchiveMayOnlyBeRead) {
    OpenUserRow(0);
    editor.text = "edited";
    std::filesystem::permissions(user.Path(), std::filesystem::perms(0444));
    const test::WithoutRights rights;
    EXPECT_TRUE(commands.Save());
    ExpectSheet(userArchive, "one", "edited");
    EXPECT_EQ(user.Read(), Users());
}

// Save as

TEST_F(SheetCommandsTest, SavesUnderANewNameAndGoesOnWithThat) {
    OpenUserRow(0);
    editor.text = "edited";
    dialogs.play = SaveUnder(" three ");
    EXPECT_TRUE(commands.SaveAs());
    EXPECT_EQ(dialogs.shown.back(), (Texts{user.Path(), "one", "edited"}));
    ExpectSheet(userArchive, "three", "edited");
    EXPECT_EQ(title.title, "Orvane: three");
    EXPECT_EQ(user.Read(), Users() + Entry("three", "edited"));
}

TEST_F(SheetCommandsTest, StoresABlankForAnEmptyText) {
    dialogs.play = SaveUnder("empty");
    EXPECT_TRUE(commands.SaveAs());
    EXPECT_EQ(dialogs.shown.back(), (Texts{user.Path(), "", " "}));
    EXPECT_EQ(user.Read(), Users() + Entry("empty", " "));
    ExpectSheet(userArchive, "empty", "");
    EXPECT_FALSE(commands.IsModified());

    OpenUserRow(2);
    EXPECT_EQ(editor.text, " ");
}

TEST_F(SheetCommandsTest, TakesTheEditorForTheSheetThatWasClickedInSaveMode) {
    editor.text = "typed";
    dialogs.play = [](FileDialogModel& model) {
        model.Select(1);
        return model.DoubleClick() == DialogStep::accept;
    };
    EXPECT_TRUE(commands.SaveAs());
    ExpectSheet(userArchive, "two", "typed");
    EXPECT_EQ(editor.text, "typed");
    EXPECT_EQ(title.title, "Orvane: two");
    EXPECT_EQ(user.Read(), Users());
}

TEST_F(SheetCommandsTest, TakesASheetForSavedThatCouldNotBeStored) {
    editor.text = "typed";
    user.Block();
    dialogs.play = SaveUnder("new");
    EXPECT_TRUE(commands.SaveAs());
    ExpectSheet(userArchive, "new", "typed");
}

// Close request

TEST_F(SheetCommandsTest, ClosesAnUnmodifiedSheetUnasked) {
    EXPECT_TRUE(commands.CloseRequest());
    OpenUserRow(0);
    EXPECT_TRUE(commands.CloseRequest());
    commands.New();
    EXPECT_TRUE(commands.CloseRequest());
    EXPECT_EQ(questions.Asked(), Texts{});
}

TEST_F(SheetCommandsTest, AsksBeforeAnEditedSheetIsClosed) {
    struct Row {
        Answer answer;
        bool closes;
        std::string stored;
    };
    const Row rows[] = {
        {Answer::cancel, false, "1\r\n1"},
        {Answer::no, true, "1\r\n1"},
        {Answer::yes, true, "edited"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.stored);
        commands.Reopen(userArchive, "one");
        editor.text = "edited";
        questions.answers = {row.answer};
        EXPECT_EQ(commands.CloseRequest(), row.closes);
        EXPECT_EQ(questions.Asked(), Texts{saveYesNoCancel});
        EXPECT_EQ(user.Read(), Preamble() + Entry("one", row.stored) + Entry("two", "2"));
        EXPECT_EQ(editor.text, "edited");
    }
}

TEST_F(SheetCommandsTest, StaysOpenWhenAFirstSaveIsCancelled) {
    editor.text = "typed";
    questions.answers = {Answer::yes, Answer::yes};
    dialogs.play = Cancel;
    EXPECT_FALSE(commands.CloseRequest());
    EXPECT_EQ(editor.text, "typed");
    ExpectSheet(noArchive, "", "");

    dialogs.play = SaveUnder("typed sheet");
    EXPECT_TRUE(commands.CloseRequest());
    EXPECT_EQ(user.Read(), Users() + Entry("typed sheet", "typed"));
}

// Reopening

TEST_F(SheetCommandsTest, ReopensTheLastSheet) {
    struct Row {
        std::int32_t stored;
        std::string name;
        std::int32_t archiveKind;
        std::string text;
    };
    const Row rows[] = {
        {0, "one", 0, "1\n1"},          {0, "two", 0, "2"},
        {1, "demo", 1, "3;3"},          {2, "demo", 1, "3;3"},
        {2147483647, "demo", 1, "3;3"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name + " " + std::to_string(row.stored));
        commands.Reopen(row.stored, row.name);
        ExpectSheet(row.archiveKind, row.name, row.text);
        EXPECT_EQ(editor.text, row.text);
        EXPECT_EQ(title.title, "Orvane: " + row.name);
        EXPECT_FALSE(commands.IsModified());
    }
    EXPECT_EQ(questions.Asked(), Texts{});
    EXPECT_EQ(user.Read(), Users());
    EXPECT_EQ(samples.Read(), Samples());
}

TEST_F(SheetCommandsTest, ReopensFromTheFieldsOfTheSheetItself) {
    sheet.archiveKind = userArchive;
    sheet.sheetName = "two";
    commands.Reopen(sheet.archiveKind, sheet.sheetName);
    ExpectSheet(userArchive, "two", "2");
}

TEST_F(SheetCommandsTest, ReopensASheetWithoutText) {
    user.Write(Entry("empty", ""));
    commands.Reopen(userArchive, "empty");
    ExpectSheet(userArchive, "empty", "");
    EXPECT_EQ(title.title, "Orvane: empty");
}

TEST_F(SheetCommandsTest, StartsWithNoSheetWhereTheLastOneCanNotBeHad) {
    struct Row {
        std::int32_t stored;
        std::string name;
    };
    const Row rows[] = {{-1, "one"},   {-2147483647 - 1, "one"},
                        {0, ""},       {1, ""},
                        {0, "gone"},   {0, "demo"},
                        {1, "one"},    {0, "on"},
                        {0, "one\xE6"}};
    // Not even a sheet without a name is one.
    user.Write(Users() + Entry("", "no name"));
    samples.Write(Samples() + Entry("", "no name"));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name + " " + std::to_string(row.stored));
        commands.Reopen(row.stored, row.name);
        ExpectSheet(noArchive, "", "");
        EXPECT_EQ(editor.text, "");
        EXPECT_EQ(title.title, "Orvane");
    }
    user.Remove();
    commands.Reopen(userArchive, "one");
    ExpectSheet(noArchive, "", "");
    EXPECT_EQ(title.title, "Orvane");
    EXPECT_FALSE(std::filesystem::exists(user.Path()));
    EXPECT_EQ(questions.Asked(), Texts{});
}

// A sheet's whole life

TEST_F(SheetCommandsTest, KeepsASheetFromItsFirstSaveToTheNextStart) {
    commands.New();
    editor.text = "a := 1";
    dialogs.play = SaveUnder("draft");
    EXPECT_TRUE(commands.Save());

    // Renamed, moved to the top and refused to be deleted, all in one dialog that is cancelled.
    questions.answers = {Answer::yes};
    dialogs.play = [](FileDialogModel& model) {
        model.Select(2);
        EXPECT_EQ(model.Delete(), DialogStep::stay);
        model.nameText = "final";
        EXPECT_EQ(model.Rename(), DialogStep::refresh);
        EXPECT_EQ(model.MoveUp(), DialogStep::refresh);
        EXPECT_EQ(model.MoveUp(), DialogStep::refresh);
        return false;
    };
    commands.Open();
    EXPECT_EQ(questions.Asked(),
              (Texts{"[OK] the file: draft\nis currently in open and can not be deleted.",
                     "[Confirm] The file is currently in open,do you want to rename it?"}));
    EXPECT_EQ(title.title, "Orvane: final");

    // The next dialog knows its new name.
    dialogs.play = [](FileDialogModel& model) {
        model.Select(0);
        EXPECT_EQ(model.Delete(), DialogStep::stay);
        return false;
    };
    commands.Open();
    EXPECT_EQ(questions.Asked(),
              Texts{"[OK] the file: final\nis currently in open and can not be deleted."});

    editor.text = "a := 2";
    questions.answers = {Answer::yes};
    EXPECT_TRUE(commands.CloseRequest());
    EXPECT_EQ(user.Read(),
              Preamble() + Entry("final", "a := 2") + Entry("one", "1\r\n1") + Entry("two", "2"));

    CurrentSheet next;
    next.userFilePath = sheet.userFilePath;
    next.sampleFilePath = sheet.sampleFilePath;
    test::PlainEditor nextEditor;
    test::PlainTitle nextTitle;
    PrepareArchive(next.userFilePath);
    SheetCommands nextCommands(next, {nextEditor, nextTitle, dialogs, questions});
    nextCommands.Reopen(sheet.archiveKind, sheet.sheetName);
    EXPECT_EQ(nextEditor.text, "a := 2");
    EXPECT_EQ(nextTitle.title, "Orvane: final");
    EXPECT_FALSE(nextCommands.IsModified());
}

}  // namespace
}  // namespace orvane
