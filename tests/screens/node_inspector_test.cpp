#include "windows/node_inspector.h"

#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QTest>
#include <cmath>
#include <string>
#include <vector>

#include "app/node_inspection.h"
#include "core/calc_parameters.h"
#include "locus/locus_store.h"
#include "tests/screens/main_window_fixture.h"
#include "tests/support/active_window.h"
#include "tests/support/modal_player.h"
#include "windows/look.h"
#include "windows/node_drawing.h"

namespace orvane {
namespace {

QAbstractScrollArea& Area(QWidget& window) { return *window.findChild<QAbstractScrollArea*>(); }
QImage PictureOf(QWidget& window) { return Area(window).viewport()->grab().toImage(); }
void Escape(QWidget& window) { QTest::keyClick(&Area(window), Qt::Key_Escape); }

// A line of pixels in one colour, ends included.
void ExpectLine(const QImage& picture, QPoint from, QPoint to, QColor colour) {
    const QPoint step(from.x() < to.x() ? 1 : 0, from.y() < to.y() ? 1 : 0);
    for (QPoint at = from;; at += step) {
        ASSERT_EQ(picture.pixelColor(at), colour) << at.x() << ' ' << at.y();
        if (at == to) return;
    }
}

// The two frames of a box that is 160 wide; the corners at the ends of the right and bottom sides
// belong to those.
void ExpectFrames(const QImage& picture, QPoint corner, int height, QColor topLeft,
                  QColor bottomRight) {
    for (const int inset : {0, 1}) {
        SCOPED_TRACE(inset);
        const int left = corner.x() + inset, right = corner.x() + 159 - inset;
        const int top = corner.y() + inset, bottom = corner.y() + height - 1 - inset;
        ExpectLine(picture, {left, top}, {right - 1, top}, topLeft);
        ExpectLine(picture, {left, top}, {left, bottom - 1}, topLeft);
        ExpectLine(picture, {left, bottom}, {right, bottom}, bottomRight);
        ExpectLine(picture, {right, top}, {right, bottom}, bottomRight);
    }
}

int LineHeight() { return QFontMetrics(InterfaceFont()).height(); }
int HeightOf(int lines) { return lines * LineHeight() + 6; }

bool HasInk(const QImage& picture, const QRect& area) {
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (picture.pixelColor(x, y) != windowColour) return true;
        }
    }
    return false;
}

class NodeInspector : public MainWindowTest {
protected:
    void SetUp() override { locusStore.Clear(); }

    // Runs the window on a tree of the test's own.
    void Show(FunctionNode& root, const test::ModalPlayer::Step& step) {
        owner.resize(300, 200);
        owner.show();
        player.Then(step);
        ShowNodeInspector(&owner, root, Path("Setting/Orvane.set"));
        owner.hide();
    }
    MainWindow& StartWith(const std::string& sheet, TextPosition caret) {
        MainWindow& shown = Start();
        shown.Editor().SetText(sheet);
        FormulaView& view = shown.Editor().View();
        for (int line = 0; line < caret.line; ++line) QTest::keyClick(&view, Qt::Key_Down);
        for (int col = 0; col < caret.col; ++col) QTest::keyClick(&view, Qt::Key_Right);
        EXPECT_EQ(view.Model().Caret(), caret);
        return shown;
    }
    static void PressF12(MainWindow& shown) {
        EXPECT_TRUE(test::MakeActive(shown));
        QTest::keyClick(&shown.Editor().View(), Qt::Key_F12);
    }
    void ExpectMessage(MainWindow& shown, const QString& text) {
        player.Then([=](QWidget& window) {
            auto* const box = qobject_cast<QMessageBox*>(&window);
            ASSERT_NE(box, nullptr) << window.windowTitle().toStdString();
            EXPECT_EQ(box->windowTitle(), "Message");
            EXPECT_EQ(box->text(), text);
            test::Press(box->button(QMessageBox::Ok));
        });
        PressF12(shown);
        EXPECT_TRUE(player.IsDone());
    }

    QWidget owner;
    test::ModalPlayer player;
};

void Adopt(FunctionNode& parent, std::span<FunctionNode> children) {
    parent.children = children;
    for (FunctionNode& child : children) child.parent = &parent;
}

// The picture

TEST_F(NodeInspector, FramesEachKindInItsColours) {
    FunctionNode root;
    FunctionNode children[5];
    Adopt(root, children);
    constexpr NodeKind kinds[] = {NodeKind::number, NodeKind::function, NodeKind::brace,
                                  NodeKind::variable, NodeKind::formulaReference};
    for (int at = 0; at < 5; ++at) children[at].kind = kinds[at];
    Show(root, [&](QWidget& window) {
        const QImage picture = PictureOf(window);
        const int box = HeightOf(3);
        EXPECT_EQ(root.boxHeight, box);
        const int step = children[0].treeHeight;
        EXPECT_GE(step, box);
        EXPECT_EQ(root.treeHeight, 5 * step);
        const QColor red(255, 0, 0), blue(0, 0, 255);
        ExpectFrames(picture, {10, 10}, box, red, red);
        ExpectFrames(picture, {195, 10}, box, Qt::black, Qt::white);
        ExpectFrames(picture, {195, 10 + step}, box, Qt::white, Qt::black);
        ExpectFrames(picture, {195, 10 + 2 * step}, box, blue, blue);
        ExpectFrames(picture, {195, 10 + 3 * step}, box, Qt::black, Qt::black);
        // A formula reference has none.
        const int last = 10 + 4 * step;
        EXPECT_EQ(picture.pixelColor(194 + 160, last), windowColour);
        EXPECT_EQ(picture.pixelColor(196, last + 1), windowColour);
        EXPECT_TRUE(HasInk(picture, QRect(199, last + 3, 100, LineHeight())));
        Escape(window);
    });
}

TEST_F(NodeInspector, DrawsALineToTheMiddleOfEachChild) {
    FunctionNode root;
    FunctionNode children[3];
    Adopt(root, children);
    for (int row = 0; row < 4; ++row) root.result.AppendRow(1);
    children[1].result.SetReal(1);
    Show(root, [&](QWidget& window) {
        const QImage picture = PictureOf(window);
        const int fromY = 10 + HeightOf(7) / 2;
        int top = 10;
        for (const FunctionNode& child : children) {
            EXPECT_EQ(picture.pixelColor(170, fromY), QColor(Qt::black));
            // One pixel in each column, on the straight way.
            const int toY = top + child.boxHeight / 2;
            for (int x = 171; x < 195; ++x) {
                const double y = fromY + (toY - fromY) * (x - 170) / 25.0;
                const int near = static_cast<int>(std::lround(y));
                const bool isDrawn = picture.pixelColor(x, near) == QColor(Qt::black) ||
                                     picture.pixelColor(x, near - 1) == QColor(Qt::black) ||
                                     picture.pixelColor(x, near + 1) == QColor(Qt::black);
                EXPECT_TRUE(isDrawn) << x;
            }
            top += child.treeHeight;
        }
        Escape(window);
    });
}

TEST_F(NodeInspector, WritesTheTextIntoTheBox) {
    FunctionNode root;
    root.kind = NodeKind::variable;
    root.variableName = "a_very_long_name_that_no_box_is_wide_enough_for";
    root.evaluated = true;
    root.result.SetReal(2.25);
    Show(root, [&](QWidget& window) {
        const QImage picture = PictureOf(window);
        EXPECT_EQ(NodeText(root),
                  "variable: a_very_long_name_that_no_box_is_wide_enough_for - yes\n"
                  "--------------- Done\n2.2\n--------------- Pick\n");
        for (int line = 0; line < 4; ++line) {
            const QRect place(15, 13 + line * LineHeight(), 154, LineHeight());
            EXPECT_TRUE(HasInk(picture, place)) << line;
        }
        // Black on the window's own colour, from the text's left edge on, and cut off at its right.
        EXPECT_FALSE(HasInk(picture, QRect(12, 12, 3, HeightOf(4) - 4)));
        EXPECT_TRUE(HasInk(picture, QRect(155, 13, 13, LineHeight())));
        EXPECT_FALSE(HasInk(picture, QRect(170, 0, 100, 200)));
        EXPECT_EQ(picture.pixelColor(5, 5), windowColour);
        Escape(window);
    });
}

TEST_F(NodeInspector, StandsWhereADialogStands) {
    FunctionNode root;
    Show(root, [&](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), "Show func-node");
        EXPECT_EQ(window.parentWidget(), &owner);
        EXPECT_TRUE(window.isModal());
        const QSize size = DialogRect(QFontMetrics(InterfaceFont()), 0, 0, 494, 358).size();
        EXPECT_EQ(window.size(), size);
        EXPECT_EQ(Area(window).size(), size);
        EXPECT_EQ(Area(window).viewport()->size(), size);  // no scroll bars for a small tree
        window.resize(120, 40);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Area(window).size() == QSize(120, 40); }));
        EXPECT_GT(Area(window).horizontalScrollBar()->maximum(), 0);
        EXPECT_GT(Area(window).verticalScrollBar()->maximum(), 0);
        QTest::keyClick(&Area(window), Qt::Key_Return);
        EXPECT_TRUE(window.isVisible());
        Escape(window);
        EXPECT_FALSE(window.isVisible());
    });
}

TEST_F(NodeInspector, HasBarsOnlyWhereTheTreeIsCutOff) {
    FunctionNode root;
    FunctionNode children[3];
    Adopt(root, children);
    Show(root, [&](QWidget& window) {
        const QSize tree(10 + 185 + 160 + 10, root.treeHeight + 20);
        const QScrollBar& across = *Area(window).horizontalScrollBar();
        const QScrollBar& down = *Area(window).verticalScrollBar();
        const int bar = down.sizeHint().width();
        struct Row {
            QSize size;
            bool hasAcross, hasDown;
        };
        const Row rows[] = {
            {tree, false, false},
            {tree - QSize(1, 1), true, true},
            {tree, false, false},  // from two bars that would each make room for the other
            {tree + QSize(0, -1), true, true},
            {tree + QSize(bar, -1), false, true},
            {tree + QSize(-1, bar), true, false},
            {tree + QSize(1, 1), false, false},
            {QSize(60, 1), true, true},
            {tree, false, false},
        };
        for (const Row& row : rows) {
            SCOPED_TRACE(testing::Message() << row.size.width() << ' ' << row.size.height());
            window.resize(row.size);
            ASSERT_TRUE(QTest::qWaitFor([&] { return Area(window).size() == row.size; }));
            EXPECT_EQ(across.maximum() > 0, row.hasAcross);
            EXPECT_EQ(down.maximum() > 0, row.hasDown);
            // The far corner comes into view.
            const QSize shown = Area(window).viewport()->size();
            EXPECT_EQ(across.maximum(), std::max(tree.width() - shown.width(), 0));
            EXPECT_EQ(down.maximum(), std::max(tree.height() - shown.height(), 0));
        }
        Escape(window);
    });
}

// Large trees

TEST_F(NodeInspector, ScrollsThroughTreesLargerThanAnyWidget) {
    constexpr int count = 100'000;
    std::vector<FunctionNode> nodes(count);
    FunctionNode root;
    Adopt(root, nodes);
    for (FunctionNode& node : nodes) node.kind = NodeKind::number;
    Show(root, [&](QWidget& window) {
        QScrollBar& bar = *Area(window).verticalScrollBar();
        const int step = nodes[0].treeHeight;
        EXPECT_EQ(bar.maximum(), 20 + count * step - Area(window).viewport()->height());
        QElapsedTimer watch;
        watch.start();
        for (int at = 0; at <= 20; ++at) {
            bar.setValue(bar.maximum() / 20 * at);
            Area(window).viewport()->repaint();
        }
        EXPECT_LT(watch.elapsed(), 20 * 250);
        bar.setValue(bar.maximum());
        const QImage picture = PictureOf(window);
        const int top = 10 + (count - 1) * step - bar.value();
        ExpectFrames(picture, {195, top}, HeightOf(3), Qt::black, Qt::white);
        // Its line comes from far above and goes through the gaps between the boxes.
        for (int y = top - (step - HeightOf(3)); y < top; ++y) {
            EXPECT_EQ(picture.pixelColor(195, y), QColor(Qt::black)) << y;
        }
        // In steps of the wheel and the keys.
        QTest::keyClick(&Area(window), Qt::Key_Up);
        EXPECT_LT(bar.value(), bar.maximum());
        Escape(window);
    });
}

TEST_F(NodeInspector, ScrollsThroughDeepTrees) {
    constexpr int count = 100'000;
    std::vector<FunctionNode> chain(count);
    for (int at = 0; at + 1 < count; ++at) {
        Adopt(chain[static_cast<std::size_t>(at)], {&chain[static_cast<std::size_t>(at) + 1], 1});
    }
    chain.back().kind = NodeKind::brace;
    Show(chain.front(), [&](QWidget& window) {
        QScrollBar& bar = *Area(window).horizontalScrollBar();
        const int width = 10 + 185 * (count - 1) + 160 + 10;
        EXPECT_EQ(bar.maximum(), width - Area(window).viewport()->width());
        bar.setValue(bar.maximum());
        const QColor blue(0, 0, 255), red(255, 0, 0);
        const QImage picture = PictureOf(window);
        const int left = width - 170 - bar.value();
        ExpectFrames(picture, {left, 10}, HeightOf(3), blue, blue);
        ExpectFrames(picture, {left - 185, 10}, HeightOf(3), red, red);
        Escape(window);
    });
}

// The key

TEST_F(NodeInspector, OpensByF12ForTheSentenceAtTheCaret) {
    const std::string sheet = "x = 3;\n1 + 2 * x;\ny = 2;\n";
    MainWindow& shown = StartWith(sheet, {1, 4});
    player.Then([](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), "Show func-node");
        const QImage picture = PictureOf(window);
        // function plus, and below it the number 1 and function times
        ExpectLine(picture, {10, 10}, {168, 10}, Qt::white);
        ExpectFrames(picture, {195, 10}, HeightOf(4), Qt::black, Qt::white);
        ExpectLine(picture, {195, 10 + HeightOf(4) + 10}, {353, 10 + HeightOf(4) + 10}, Qt::white);
        Escape(window);
    });
    PressF12(shown);
    EXPECT_TRUE(player.IsDone());
    EXPECT_EQ(shown.Editor().GetText(), sheet);
    EXPECT_EQ(shown.Editor().View().Model().Caret(), (TextPosition{1, 4}));
}

TEST_F(NodeInspector, OpensWhicheverControlHasTheFocus) {
    MainWindow& shown = StartWith("1+2;", {0, 0});
    for (QWidget* focused :
         std::initializer_list<QWidget*>{&shown.Result(), &ControlOf(shown, 1018),
                                         &ControlOf(shown, 1021), &shown.Editor().View()}) {
        EXPECT_TRUE(test::MakeActive(shown));
        focused->setFocus();
        player.Then([](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), "Show func-node");
            Escape(window);
        });
        QTest::keyClick(focused, Qt::Key_F12);
        EXPECT_TRUE(player.IsDone());
    }
}

TEST_F(NodeInspector, LeavesReportCurvesAndOptionsAlone) {
    MainWindow& shown = StartWith("locus_xy(x, 0, 10, 50, x * x);\nhex: 255;\n", {0, 3});
    PressButton(MainButton::calculate);
    ASSERT_EQ(locusStore.Count(), 1);
    const LocusSet* const curve = &locusStore[0];
    const std::size_t points = curve->points.size();
    const QString report = shown.Result().toPlainText();
    const CalcParameters before = calcParameters;

    shown.Editor().SetText("locus_xy(x, 0, 10, 50, x);\nlocus_xy(x, 0, 1, 50, 1);\n");
    ControlOf<QLineEdit>(shown, 1021).setText("7");
    player.Then(Escape);
    PressF12(shown);
    EXPECT_TRUE(player.IsDone());

    EXPECT_EQ(shown.Result().toPlainText(), report);
    ASSERT_EQ(locusStore.Count(), 1);
    EXPECT_EQ(&locusStore[0], curve);
    EXPECT_EQ(curve->points.size(), points);
    EXPECT_EQ(calcParameters.floatPrecision, before.floatPrecision);
    EXPECT_EQ(calcParameters.wordModulus, before.wordModulus);
    EXPECT_EQ(calcParameters.progress, nullptr);
    EXPECT_FALSE(ControlOf(shown, 1024).isVisible());  // the progress bar
}

TEST_F(NodeInspector, ShowsTheTreeOfASeriesAndOfASentenceThatFails) {
    MainWindow& shown = StartWith("series(k, 1, 1, 4, 2 * k);\n1 + sqrt(0 - 1);\n", {0, 8});
    player.Then([](QWidget& window) {
        // The name of the variable is a node of its own.
        ExpectLine(PictureOf(window), {10, 10}, {168, 10}, Qt::white);
        Escape(window);
    });
    PressF12(shown);
    QTest::keyClick(&shown.Editor().View(), Qt::Key_Down);
    player.Then([](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), "Show func-node");
        Escape(window);
    });
    PressF12(shown);
    EXPECT_TRUE(player.IsDone());
    EXPECT_EQ(shown.Result().toPlainText(), "");
}

TEST_F(NodeInspector, TellsWhyThereIsNoTree) {
    MainWindow& shown = StartWith("text: a;\ndefine: b = 1;\nb;\n", {0, 0});
    ExpectMessage(shown, "Sentence 1 is a text. Only formulas have nodes.");
    QTest::keyClick(&shown.Editor().View(), Qt::Key_Down);
    ExpectMessage(shown, "Sentence 2 is a define. Only formulas have nodes.");
    QTest::keyClick(&shown.Editor().View(), Qt::Key_Down);
    QTest::keyClick(&shown.Editor().View(), Qt::Key_Down);
    ExpectMessage(shown, "There is no sentence at the caret.");
    shown.Editor().SetText("1;\n2 +;");
    ExpectMessage(shown,
                  "There are no nodes, since the sheet has an error.\n\n"
                  "C002-10: operator \"+\" is used incorrect in sentence 2.");
    shown.Editor().SetText("");
    ExpectMessage(shown, "Please input formulas for calculation.");
    EXPECT_EQ(shown.Result().toPlainText(), "");
}

TEST_F(NodeInspector, OpensOneWindowAtATime) {
    MainWindow& shown = StartWith("1+2;", {0, 0});
    player.Then([&](QWidget& window) {
        // What was pressed while the run went on comes late.
        QTest::keyClick(&shown.Editor().View(), Qt::Key_F12);
        QTest::keyClick(&Area(window), Qt::Key_F12);
        QTest::qWait(50);
        EXPECT_EQ(QApplication::activeModalWidget(), &window);
        EXPECT_EQ(shown.findChildren<QDialog*>().size(), 1);
        Escape(window);
    });
    PressF12(shown);
    EXPECT_EQ(shown.findChildren<QDialog*>().size(), 0);
}

// Settings

TEST_F(NodeInspector, StoresItsPlaceAndNeverAsksForIt) {
    Write("Setting/Orvane.set", "{SECT_MAIN}\r\n<KEY>\r\n<LIST>\r\n");
    FunctionNode root;
    QRect place;
    Show(root, [&](QWidget& window) {
        window.setGeometry(200, 150, 321, 234);
        EXPECT_TRUE(QTest::qWaitFor([&] { return window.size() == QSize(321, 234); }));
        QTest::qWait(50);
        place = window.geometry();
        window.close();
    });
    SettingsFile settings(Path("Setting/Orvane.set"));
    ASSERT_TRUE(settings.Open());
    WindowPlacement stored;
    ASSERT_TRUE(settings.GetPlacement("SECT_MAIN", "KEY_DLGNODEPLACE", stored));
    EXPECT_EQ(stored.showState, 1U);
    EXPECT_EQ(stored.left, place.left());
    EXPECT_EQ(stored.top, place.top());
    EXPECT_EQ(stored.right - stored.left, 321);
    EXPECT_EQ(stored.bottom - stored.top, 234);
    Show(root, [&](QWidget& window) {
        EXPECT_EQ(window.size(), DialogRect(QFontMetrics(InterfaceFont()), 0, 0, 494, 358).size());
        Escape(window);
    });
}

TEST_F(NodeInspector, MakesNoSettings) {
    QFile::remove(QString::fromStdString(Path("Setting/Orvane.set")));
    FunctionNode root;
    Show(root, Escape);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(Path("Setting/Orvane.set"))));
}

}  // namespace
}  // namespace orvane
