#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "tests/screens/main_window_fixture.h"
#include "tests/support/modal_player.h"
#include "windows/control_ids.h"

// A sheet from its first save to the next start, through the buttons, dialogs and boxes that a user
// sees.

namespace orvane {
namespace {

using namespace ids::fileDialog;

template <typename Widget>
Widget& In(QWidget& window, int id) {
    return *window.findChild<Widget*>(QString::number(id));
}

void Press(QWidget& window, int id) { test::Press(&In<QPushButton>(window, id)); }

void SelectRow(QWidget& window, int row) {
    QListView& list = In<QListView>(window, sheetList);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualRect(list.model()->index(row, 0)).center());
}

void EnterName(QWidget& window, const char* name) {
    QLineEdit& box = In<QLineEdit>(window, nameBox);
    box.selectAll();
    QTest::keyClicks(&box, QLatin1String(name));
}

// Answers a box that must say this.
test::ModalPlayer::Step Answered(const char* text, QMessageBox::StandardButton button) {
    return [text, button](QWidget& window) {
        auto* box = qobject_cast<QMessageBox*>(&window);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text().toStdString(), text);
        EXPECT_EQ(box->windowTitle(), "Message");
        test::Press(box->button(button));
    };
}

class SheetLife : public MainWindowTest {
protected:
    void SaveAs(const char* name) {
        test::ModalPlayer player;
        player.Then([name](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Save as ...");
            EnterName(dialog, name);
            Press(dialog, saveAsButton);
        });
        PressButton(MainButton::saveAs);
    }
};

TEST_F(SheetLife, GoesFromItsFirstSaveToTheNextStart) {
    MainWindow& shown = Start();
    shown.Editor().SetText("a = 1;\n");
    SaveAs("First");
    EXPECT_EQ(shown.windowTitle(), "Orvane: First");

    // A second one; the first is saved, so nothing is asked.
    PressButton(MainButton::newFormula);
    EXPECT_EQ(shown.windowTitle(), "Orvane: new calculation");
    EXPECT_EQ(shown.Editor().GetText(), "");
    shown.Editor().SetText("b = 2;");
    SaveAs("Second");
    shown.Editor().SetText("b = 3;");
    PressButton(MainButton::save);
    EXPECT_EQ(Read("Setting/user.file"),
              "do not modify the file manually\r\n\r\n"
              "\xB6"
              "First\xE6"
              "a = 1;\n\xB6"
              "Second\xE6"
              "b = 3;");

    // The open one can't be deleted; it is renamed and moved up, and the dialog is closed.
    {
        test::ModalPlayer player;
        player.Then([&](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "File");
            SelectRow(dialog, 1);
            player.Then(Answered("the file: Second\nis currently in open and can not be deleted.",
                                 QMessageBox::Ok));
            Press(dialog, deleteButton);
            EnterName(dialog, "Renamed");
            player.Then(Answered("The file is currently in open,do you want to rename it?",
                                 QMessageBox::Yes));
            Press(dialog, renameButton);
            EXPECT_EQ(shown.windowTitle(), "Orvane: Renamed");
            Press(dialog, moveUpButton);
            dialog.close();
        });
        PressButton(MainButton::open);
    }
    EXPECT_EQ(Read("Setting/user.file"),
              "do not modify the file manually\r\n\r\n"
              "\xB6"
              "Renamed\xE6"
              "b = 3;\xB6"
              "First\xE6"
              "a = 1;\n");

    End();
    MainWindow& again = Start();
    EXPECT_EQ(again.windowTitle(), "Orvane: Renamed");
    EXPECT_EQ(again.Editor().GetText(), "b = 3;");
}

TEST_F(SheetLife, LosesItsTextWhereTheFirstSaveIsCancelledAfterYes) {
    MainWindow& shown = Start();
    shown.Editor().SetText("a = 1;");
    test::ModalPlayer player;
    player.Then(Answered("save the calculation?", QMessageBox::Yes));
    player.Then([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    PressButton(MainButton::newFormula);
    EXPECT_EQ(shown.Editor().GetText(), "");
    EXPECT_EQ(shown.windowTitle(), "Orvane: new calculation");
}

TEST_F(SheetLife, StaysOpenWhereTheFirstSaveIsCancelledAtTheEnd) {
    MainWindow& shown = Start();
    shown.Editor().SetText("a = 1;");
    test::ModalPlayer player;
    player.Then(Answered("save the calculation?", QMessageBox::Yes));
    player.Then([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_FALSE(shown.close());
    EXPECT_TRUE(shown.isVisible());
    EXPECT_EQ(shown.Editor().GetText(), "a = 1;");
    player.Then(Answered("save the calculation?", QMessageBox::No));
    EXPECT_TRUE(shown.close());
}

TEST_F(SheetLife, BelongsToTheUserOnceASampleIsSaved) {
    Write("Setting/sample.file",
          "\xB6"
          "Sample\xE6x = 1;");
    MainWindow& shown = Start();
    {
        test::ModalPlayer player;
        player.Then([](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Sample files");
            SelectRow(dialog, 0);
            Press(dialog, openButton);
        });
        shown.RunCommand(ids::command::openSamples);
    }
    EXPECT_EQ(shown.windowTitle(), "Orvane: Sample");
    shown.Editor().SetText("x = 2;");
    {
        test::ModalPlayer player;
        player.Then([](QWidget& dialog) {
            EnterName(dialog, "Mine");
            Press(dialog, saveAsButton);
        });
        PressButton(MainButton::save);
    }
    EXPECT_EQ(shown.windowTitle(), "Orvane: Mine");
    EXPECT_EQ(Read("Setting/user.file"),
              "do not modify the file manually\r\n\r\n"
              "\xB6"
              "Mine\xE6x = 2;");
    EXPECT_EQ(Read("Setting/sample.file"),
              "\xB6"
              "Sample\xE6x = 1;");
}

}  // namespace
}  // namespace orvane
