#include <QPushButton>
#include <QTest>
#include <string_view>

#include "tests/screens/main_window_fixture.h"
#include "tests/support/modal_player.h"
#include "windows/control_ids.h"
#include "windows/help_topics.h"
#include "windows/help_viewer.h"

// The ways from the main window and its dialogs into the help, with the pages that users have.

namespace orvane {
namespace {

class HelpCommands : public MainWindowTest {
protected:
    HelpCommands() { ProgramHelp().SetFolder(QStringLiteral(ORVANE_HELP_FOLDER)); }
    ~HelpCommands() override { ProgramHelp().SetFolder({}); }

    // The topic on the screen; empty while there is none.
    static std::string Shown() {
        HelpWindow* const help = ProgramHelp().Window();
        return help != nullptr && help->isVisible() ? help->Browser().ShownTopic().toStdString()
                                                    : "";
    }
};

TEST_F(HelpCommands, OpenNothingWithoutAPage) {
    MainWindow& shown = Start();
    for (const int command : {32840, 32849, 32853, 32923}) {
        shown.RunCommand(command);
        EXPECT_EQ(Shown(), "") << command;
    }
    shown.RunCommand(ids::command::firstTopic);
    EXPECT_EQ(Shown(), "function/function.htm");
}

struct WordRow {
    const char* sheet;
    const char* topic;  // with the caret at the end
};
constexpr WordRow wordRows[] = {
    {"a = sin", "function/normal.htm#sin"},
    {"hex", "sentence/formula/outputkey.htm#hex"},
    {"a = integral_curve_xy", "function/variable/Integral/curve.htm#integral_curve_xy"},
    {"a = Sin", "tools/fasthelp.htm"},
};

TEST_F(HelpCommands, OpenAtTheWordOfTheHelpKey) {
    MainWindow& shown = Start();
    QWidget& view = *shown.Editor().View().viewport();
    EXPECT_EQ(Shown(), "");
    for (const auto& [sheet, topic] : wordRows) {
        SCOPED_TRACE(sheet);
        shown.Editor().SetText(sheet);
        QTest::keyClick(&view, Qt::Key_End);
        QTest::keyClick(&view, Qt::Key_F2);
        EXPECT_EQ(Shown(), topic);
    }
}

struct DialogRow {
    int command;
    int button;  // "Help"; none: the key that stands for the button in the title bar
    std::string_view topic;
};
constexpr DialogRow dialogRows[] = {
    {ids::command::textColours, 0, topics::textColours},
    {ids::command::generalOptions, 0, topics::generalOptions},
    {ids::command::allKeywords, ids::keywordDialog::helpButton, topics::allKeywords},
    {ids::command::locus, ids::locusWindow::helpButton, topics::locus},
};

TEST_F(HelpCommands, OpenThePagesOfTheDialogs) {
    MainWindow& shown = Start();
    for (const auto& [command, button, topic] : dialogRows) {
        SCOPED_TRACE(command);
        test::ModalPlayer player;
        player.Then([&](QWidget& dialog) {
            if (button == 0) {
                QTest::keyClick(&dialog, Qt::Key_F1);
            } else {
                test::Press(dialog.findChild<QPushButton*>(QString::number(button)));
            }
            EXPECT_EQ(Shown(), topic);
            dialog.close();
        });
        shown.RunCommand(command);
    }
}

}  // namespace
}  // namespace orvane
