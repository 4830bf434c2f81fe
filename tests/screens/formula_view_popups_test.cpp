#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <string>

#include "tests/screens/formula_view_fixture.h"

// The keyword list and the hint over the text they serve.

namespace orvane {
namespace {

class FormulaViewPopups : public FormulaViewTest {
protected:
    std::string Selected() const {
        const int row = view.Popup().List().selected;
        return row < 0 ? "" : keywordTable.Sorted()[static_cast<std::size_t>(row)]->name;
    }
    bool HasHint() const { return view.Hint().IsShowing(); }
    std::string Hinted() const { return HasHint() ? view.Hint().Hint().name : ""; }
    bool HasList() const { return view.Popup().IsShowing(); }
};

TEST_F(FormulaViewPopups, OpenTheListAtTheWord) {
    Type("1+sq");
    Press(Qt::Key_F1);
    ASSERT_TRUE(HasList());
    EXPECT_EQ(Selected().substr(0, 2), "sq");
    EXPECT_TRUE(view.hasFocus());
    EXPECT_EQ(view.Popup().mapToGlobal(QPoint()),
              viewport.mapToGlobal(view.CaretCell().topLeft() + QPoint(0, view.LineHeight())));
}

TEST_F(FormulaViewPopups, OpenNoListOverASelection) {
    editor.SetText("sqr");
    Select({0, 0}, {0, 2});
    Press(Qt::Key_F1);
    EXPECT_FALSE(HasList());
}

TEST_F(FormulaViewPopups, LetTheListFollowTheCaret) {
    Type("c");
    Press(Qt::Key_F1);
    const QPoint before = view.Popup().pos();
    EXPECT_EQ(Selected().substr(0, 1), "c");
    Type("os");
    EXPECT_EQ(Selected(), "cos");
    EXPECT_EQ(view.Popup().pos(), before + QPoint(2 * view.CellWidth(), 0));
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Selected(), "");
    Type("sin");
    Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_FALSE(Model().HasSelection());
    EXPECT_EQ(Model().caretCol, 2);
    EXPECT_EQ(Selected(), "sin");
    Press(Qt::Key_Delete);
    EXPECT_EQ(Text(), "si");
    EXPECT_TRUE(HasList());
}

TEST_F(FormulaViewPopups, HandKeysToTheList) {
    editor.SetText("a\nb");
    Press(Qt::Key_F1);
    ASSERT_TRUE(HasList());
    const int last = keywordCount - 1;
    const int page = view.Popup().List().pageRows;
    const std::pair<Qt::Key, int> moves[] = {{Qt::Key_End, last},      {Qt::Key_Up, last - 1},
                                             {Qt::Key_Home, 0},        {Qt::Key_PageDown, page},
                                             {Qt::Key_Down, page + 1}, {Qt::Key_PageUp, 1}};
    for (const auto& [key, row] : moves) {
        Press(key);
        EXPECT_EQ(view.Popup().List().selected, row);
    }
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Escape, Qt::Key_Insert}) {
        QKeyEvent press(QEvent::KeyPress, key, {});
        QApplication::sendEvent(&view, &press);
        EXPECT_TRUE(press.isAccepted());
    }
    EXPECT_EQ(Text(), "a\nb");
    EXPECT_EQ(Model().Caret(), (TextPosition{0, 0}));
    EXPECT_TRUE(HasList());
}

TEST_F(FormulaViewPopups, AcceptByEnterInOneStep) {
    Type("1+sq+2");
    Press(Qt::Key_Left);
    Press(Qt::Key_Left);
    Press(Qt::Key_F1);
    const std::string name = Selected();
    ASSERT_EQ(name.substr(0, 2), "sq");
    Press(Qt::Key_Return);
    EXPECT_FALSE(HasList());
    EXPECT_EQ(Text(), "1+" + name + "+2");
    EXPECT_EQ(Model().caretCol, static_cast<int>(2 + name.size()));
    EXPECT_FALSE(HasHint());
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Text(), "1+sq+2");
}

TEST_F(FormulaViewPopups, EatEnterWhereNothingIsSelected) {
    Press(Qt::Key_F1);
    ASSERT_TRUE(HasList());
    EXPECT_EQ(Selected(), "");
    Press(Qt::Key_Return);
    EXPECT_EQ(Text(), "");
    EXPECT_TRUE(HasList());
}

struct TriggerRow {
    const char* word;
    const char* trigger;
    const char* text;
    bool accepted;
};

TEST_F(FormulaViewPopups, AcceptByWhatFollowsTheKeyword) {
    const TriggerRow rows[] = {
        {"sin", "(", "sin(", true}, {"sin", "+", "sin+", false}, {"pi", "+", "pi+", true},
        {"pi", ")", "pi)", true},   {"pi", "(", "pi(", false},   {"pi", "^", "pi^", false},
        {"hex", ":", "hex:", true}, {"hex", ";", "hex;", false},
    };
    for (const auto& [word, trigger, text, accepted] : rows) {
        SCOPED_TRACE(std::string(word) + trigger);
        editor.SetText("");
        Type(word);
        if (!HasList()) Press(Qt::Key_F1);
        ASSERT_EQ(Selected(), word);
        Type(trigger);
        EXPECT_EQ(Text(), text);
        EXPECT_EQ(HasList(), !accepted);
        // Taken from the list it is one step, typed it is a step of its own.
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Text(), word);
        const UndoRecord& undone = Model().history.RecordAt(Model().history.current + 1);
        EXPECT_EQ(undone.inserted, accepted ? text : trigger);
    }
}

TEST_F(FormulaViewPopups, TypeABracketBehindAConstantAndKeepTheList) {
    Type("pi");
    Press(Qt::Key_F1);
    Type("(");
    EXPECT_EQ(Text(), "pi(");
    EXPECT_TRUE(HasList());
    EXPECT_FALSE(HasHint());
}

TEST_F(FormulaViewPopups, AcceptByADoubleClick) {
    Type("co");
    Press(Qt::Key_F1);
    const std::string name = Selected();
    ASSERT_FALSE(name.empty());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view.Popup()));
    QTest::mouseDClick(view.Popup().windowHandle(), Qt::LeftButton, {}, QPoint(20, 8));
    EXPECT_EQ(Text(), name);
    EXPECT_FALSE(HasList());
    EXPECT_TRUE(view.hasFocus());
}

TEST_F(FormulaViewPopups, HideTheListByAPressInTheText) {
    editor.SetText("abc");
    Press(Qt::Key_F1);
    ASSERT_TRUE(HasList());
    Click(CellPoint(0, 2));
    EXPECT_FALSE(HasList());
    EXPECT_EQ(Model().caretCol, 2);
}

TEST_F(FormulaViewPopups, HideBothByAPressOutsideTheView) {
    QLineEdit other(&window);
    other.setGeometry(520, 30, 100, 30);
    other.show();
    Type("sin(");
    Press(Qt::Key_F1);
    ASSERT_TRUE(HasList());
    ASSERT_TRUE(HasHint());
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, other.geometry().center());
    EXPECT_FALSE(HasList());
    EXPECT_FALSE(HasHint());
    EXPECT_EQ(Text(), "sin(");

    // The open calls went with the hint: the next one starts anew.
    Click(CellPoint(0, 4));
    Type("cos(1)");
    EXPECT_FALSE(HasHint());
}

TEST_F(FormulaViewPopups, ShowTheHintBehindABracket) {
    Type("1+sum  (");
    EXPECT_EQ(Hinted(), "sum");
    EXPECT_FALSE(view.Hint().Hint().optionalRows.empty());
    EXPECT_TRUE(view.hasFocus());
    const QPoint caret = viewport.mapToGlobal(view.CaretCell().topLeft());
    EXPECT_EQ(view.Hint().pos().x(), caret.x());
    EXPECT_LT(view.Hint().geometry().bottom(), caret.y());
}

TEST_F(FormulaViewPopups, ShowNoHintBehindWhatIsNoFunction) {
    for (const char* const text : {"(", "+(", "pi(", "hex(", "qqq("}) {
        SCOPED_TRACE(text);
        editor.SetText("");
        Type(text);
        EXPECT_FALSE(HasHint());
    }
}

TEST_F(FormulaViewPopups, ShowTheHintOfTheInnermostOpenCall) {
    Type("sin(cos(1");
    EXPECT_EQ(Hinted(), "cos");
    Type(")");
    EXPECT_EQ(Hinted(), "sin");
    const QPoint name = viewport.mapToGlobal(QPoint());
    EXPECT_EQ(view.Hint().pos().x(), name.x());
    Type("+\"(\"");
    EXPECT_EQ(Hinted(), "sin");
    Type(")");
    EXPECT_FALSE(HasHint());
}

TEST_F(FormulaViewPopups, GoBackToTheNameOfTheOlderCall) {
    Type("1+sin(cos(1");
    EXPECT_EQ(Hinted(), "cos");
    Type(")");
    EXPECT_EQ(Hinted(), "sin");
    EXPECT_EQ(view.Hint().pos().x(), viewport.mapToGlobal(QPoint(2 * view.CellWidth(), 0)).x());
}

TEST_F(FormulaViewPopups, HideTheHintWhereTheCaretLeavesTheCall) {
    editor.SetText("\nx");
    Type("sin(");
    ASSERT_TRUE(HasHint());
    Press(Qt::Key_Home);
    EXPECT_FALSE(HasHint());

    Press(Qt::Key_End);
    Press(Qt::Key_Backspace);
    Type("(");
    ASSERT_TRUE(HasHint());
    Press(Qt::Key_Down);
    EXPECT_FALSE(HasHint());

    Press(Qt::Key_Up);
    Press(Qt::Key_End);
    Press(Qt::Key_Backspace);
    Type("(");
    ASSERT_TRUE(HasHint());
    Click(CellPoint(0, 4));
    EXPECT_FALSE(HasHint());
}

TEST_F(FormulaViewPopups, ShowTheHintBehindAnAcceptedFunction) {
    Type("sin");
    Press(Qt::Key_F1);
    Type("(");
    EXPECT_EQ(Text(), "sin(");
    EXPECT_FALSE(HasList());
    EXPECT_EQ(Hinted(), "sin");
}

TEST_F(FormulaViewPopups, LeaveNothingBehindInANewText) {
    Type("sin(");
    ASSERT_TRUE(HasHint());
    editor.SetText("x");
    EXPECT_FALSE(HasHint());
}

}  // namespace
}  // namespace orvane
