#include "editor/edit_commands.h"

#include <gtest/gtest.h>

#include <string>

#include "editor_checks.h"

namespace orvane {
namespace {

using test::ModelWith;

// The texts of the enabled entries, with a bar between groups.
std::string Enabled(const EditorModel& model, bool clipboardHasText) {
    std::string texts;
    for (const EditCommandRow& row : editCommandRows) {
        if (row.barAhead) texts += "| ";
        if (row.isEnabled(model, clipboardHasText)) texts += std::string(row.text) + " ";
    }
    return texts;
}

TEST(EditCommands, StandInTheOrderOfTheMenu) {
    EditorModel model = ModelWith("ab", {0, 0});
    model.EditChar('x');
    model.EditChar('y');
    model.Undo();
    model.SelectAll();
    EXPECT_EQ(Enabled(model, true), "Cut Copy Paste Delete | Undo Redo | Select all ");
    for (std::size_t index = 0; index < editCommandRows.size(); ++index) {
        EXPECT_EQ(static_cast<std::size_t>(editCommandRows[index].command), index);
    }
}

TEST(EditCommands, AreOfferedWhereTheyCanBeDone) {
    EditorModel model;
    EXPECT_EQ(Enabled(model, false), "| | Select all ");
    EXPECT_EQ(Enabled(model, true), "Paste | | Select all ");
    model.EditChar('x');
    EXPECT_EQ(Enabled(model, false), "| Undo | Select all ");
    model.Undo();
    EXPECT_EQ(Enabled(model, false), "| Redo | Select all ");
    model.SetText("ab");
    model.SelectAll();
    EXPECT_EQ(Enabled(model, false), "Cut Copy Delete | Redo | Select all ");
}

TEST(EditCommands, OfferNoCopyOfAnEmptySheet) {
    EditorModel model;
    model.SelectAll();
    EXPECT_EQ(Enabled(model, false), "| | Select all ");
}

}  // namespace
}  // namespace orvane
