#include "windows/keyword_list_dialog.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QWindow>
#include <string>
#include <vector>

#include "storage/qt_bytes.h"
#include "tests/support/modal_player.h"
#include "windows/keyword_list_rows.h"
#include "windows/look.h"

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

QTableView& List(QWidget& window) { return *window.findChild<QTableView*>("1034"); }
QPushButton& HelpButton(QWidget& window) { return *window.findChild<QPushButton*>("1026"); }
QPushButton& CloseButton(QWidget& window) { return *window.findChild<QPushButton*>("1027"); }
void Close(QWidget& window) { test::Press(&CloseButton(window)); }

std::string Cell(QWidget& window, int row, int column) {
    return BytesFrom(List(window).model()->index(row, column).data().toString());
}
std::vector<Texts> Rows(QWidget& window) {
    std::vector<Texts> rows;
    for (int row = 0; row < List(window).model()->rowCount(); ++row) {
        for (int column = 0; column < 6; ++column) {
            if (column == 0) rows.emplace_back();
            rows.back().push_back(Cell(window, row, column));
        }
    }
    return rows;
}
std::vector<Texts> Rows(const KeywordListRows& list) {
    std::vector<Texts> rows(list.Size());
    for (std::size_t row = 0; row < list.Size(); ++row) {
        for (std::size_t column = 0; column < keywordColumnCount; ++column) {
            rows[row].emplace_back(list.Text(row, column));
        }
    }
    return rows;
}
int SelectedRow(QWidget& window) {
    const QModelIndexList selected = List(window).selectionModel()->selectedRows();
    return selected.size() == 1 ? selected.first().row() : -1;
}

QPoint HeaderPoint(QHeaderView& header, int column) {
    return {header.sectionViewportPosition(column) + header.sectionSize(column) / 2,
            header.height() / 2};
}
void ClickHeader(QWidget& window, int column) {
    QHeaderView& header = *List(window).horizontalHeader();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, HeaderPoint(header, column));
}
// A point of the row, which is the one at `line` of those in view.
QPoint RowPoint(QWidget& window, int line) {
    const int height = List(window).rowHeight(0);
    return {40, line * height + height / 2};
}
void DoubleClick(QWidget& window, QPoint point, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseDClick(List(window).viewport(), button, {}, point);
    QTest::mouseRelease(List(window).viewport(), button, {}, point);
}

class KeywordDialog : public testing::Test {
protected:
    KeywordDialog() {
        owner.resize(600, 400);
        owner.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&owner));
    }

    void Show(const test::ModalPlayer::Step& step) {
        player.Then([this, step](QWidget& window) {
            dialog = &window;
            step(window);
        });
        ShowKeywordList(&owner, [this](QWidget* asking, const QString& topic) {
            EXPECT_EQ(asking, dialog);
            topics.push_back(topic.toStdString());
        });
    }
    static void Resize(QWidget& window, QSize size) {
        window.resize(size);
        EXPECT_TRUE(QTest::qWaitFor([&] { return window.size() == size; }));
    }

    QWidget owner;
    QWidget* dialog = nullptr;
    Texts topics;
    test::ModalPlayer player;
};

TEST_F(KeywordDialog, ShowsEveryKeywordInSixColumns) {
    Show([this](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), "All keywords");
        EXPECT_EQ(window.parentWidget(), &owner);
        EXPECT_TRUE(window.isModal());
        EXPECT_EQ(window.size(), DialogRect(QFontMetrics(InterfaceFont()), 0, 0, 504, 308).size());
        EXPECT_NE(window.minimumSize(), window.maximumSize());
        const QTableView& list = List(window);
        const char* const headers[] = {"return / <type>", "function / header / constant", " ",
                                       "main parameters", "optional parameters",          " "};
        ASSERT_EQ(list.model()->columnCount(), 6);
        for (int column = 0; column < 6; ++column) {
            EXPECT_EQ(list.model()->headerData(column, Qt::Horizontal).toString(), headers[column]);
        }
        EXPECT_EQ(Rows(window), Rows(KeywordListRows()));
        EXPECT_TRUE(list.showGrid());
        EXPECT_FALSE(list.verticalHeader()->isVisible());
        EXPECT_EQ(list.selectionMode(), QTableView::SingleSelection);
        EXPECT_EQ(SelectedRow(window), -1);
        EXPECT_EQ(HelpButton(window).text(), "Help");
        EXPECT_EQ(CloseButton(window).text(), "Close");
        // Every row is high enough for its text, and no header is cut off.
        EXPECT_GE(list.rowHeight(0), QFontMetrics(InterfaceFont()).height());
        EXPECT_LT(QFontMetrics(InterfaceFont()).horizontalAdvance(headers[1]) + 8,
                  list.columnWidth(1));
        EXPECT_FALSE(list.horizontalScrollBar()->isVisible());
        Close(window);
    });
}

TEST_F(KeywordDialog, LaysItselfOutAtEverySize) {
    Show([](QWidget& window) {
        const QSize first = window.size();
        const QSize button = CloseButton(window).size();
        const QFontMetrics metrics(InterfaceFont());
        EXPECT_GE(button.width(), metrics.horizontalAdvance("Close") + 16);
        for (const QSize& size : {first, QSize(900, 600), QSize(901, 333), QSize(371, 300),
                                  QSize(354, 200), QSize(300, 150), QSize(180, 80), first}) {
            SCOPED_TRACE(size.width());
            Resize(window, size);
            const int left = 12, top = 12;
            const int right = size.width() - 12, bottom = size.height() - 12;
            const int middle = (left + right) / 2;
            EXPECT_EQ(
                HelpButton(window).geometry(),
                QRect(QPoint(middle - 10 - button.width(), bottom - button.height()), button));
            EXPECT_EQ(CloseButton(window).geometry(),
                      QRect(QPoint(middle + 10, bottom - button.height()), button));
            QTableView& list = List(window);
            EXPECT_EQ(list.geometry(),
                      QRect(left, top, right - left, bottom - button.height() - 10 - top));
            const double shared = std::max(right - left - 330, 0);
            const int widths[] = {
                90, 170, 20, static_cast<int>(shared * 0.8), static_cast<int>(shared * 0.2), 20};
            for (int column = 0; column < 6; ++column) {
                EXPECT_EQ(list.columnWidth(column), widths[column]) << column;
            }
        }
        // Nothing of the list is left.
        Resize(window, QSize(40, 30));
        EXPECT_GE(List(window).width(), 0);
        EXPECT_EQ(List(window).columnWidth(3), 0);
        Resize(window, first);
        Close(window);
    });
}

TEST_F(KeywordDialog, SortsByTheClickedColumnInTurnDownAndUp) {
    Show([](QWidget& window) {
        KeywordListRows expected;
        for (const int column : {1, 1, 0, 3, 3, 4, 2, 5, 1}) {
            SCOPED_TRACE(column);
            ClickHeader(window, column);
            expected.SortBy(static_cast<std::size_t>(column));
            EXPECT_EQ(Rows(window), Rows(expected));
        }
        EXPECT_FALSE(List(window).horizontalHeader()->isSortIndicatorShown());
        Close(window);
    });
}

TEST_F(KeywordDialog, SortsFromHighToLowFirst) {
    Show([](QWidget& window) {
        ClickHeader(window, 1);
        EXPECT_EQ(Cell(window, 0, 1), "weekday");
        ClickHeader(window, 1);
        EXPECT_EQ(Cell(window, 0, 1), "abs");
        EXPECT_EQ(Cell(window, List(window).model()->rowCount() - 1, 1), "weekday");
        ClickHeader(window, 0);
        EXPECT_EQ(Cell(window, 0, 0), "uint");
        ClickHeader(window, 1);
        EXPECT_EQ(Cell(window, 0, 1), "abs");  // the fourth click, whichever column had the others
        Close(window);
    });
}

TEST_F(KeywordDialog, TakesTwoQuickClicksForTwo) {
    Show([](QWidget& window) {
        QHeaderView& header = *List(window).horizontalHeader();
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {},
                           header.viewport()->mapTo(&window, HeaderPoint(header, 1)));
        KeywordListRows expected;
        expected.SortBy(1);
        expected.SortBy(1);
        EXPECT_EQ(Rows(window), Rows(expected));
        Close(window);
    });
}

TEST_F(KeywordDialog, SortsByNothingButTheLeftButtonOnAColumn) {
    Show([](QWidget& window) {
        QHeaderView& header = *List(window).horizontalHeader();
        const QPoint behind(header.length() + 10, header.height() / 2);
        ASSERT_LT(behind.x(), header.viewport()->width());
        ASSERT_EQ(header.logicalIndexAt(behind), -1);
        const auto click = [&](Qt::MouseButton button, QPoint point) {
            QTest::mouseClick(header.viewport(), button, {}, point);
            QTest::mouseDClick(header.viewport(), button, {}, point);
            QTest::mouseRelease(header.viewport(), button, {}, point);
        };
        click(Qt::LeftButton, behind);
        click(Qt::RightButton, behind);
        click(Qt::RightButton, HeaderPoint(header, 1));
        click(Qt::MiddleButton, HeaderPoint(header, 0));
        EXPECT_EQ(Rows(window), Rows(KeywordListRows()));
        // The direction has not turned either.
        ClickHeader(window, 1);
        EXPECT_EQ(Cell(window, 0, 1), "weekday");
        Close(window);
    });
}

TEST_F(KeywordDialog, KeepsARowSelectedWhereverItGoes) {
    Show([](QWidget& window) {
        QTest::mouseClick(List(window).viewport(), Qt::LeftButton, {}, RowPoint(window, 4));
        EXPECT_EQ(SelectedRow(window), 4);
        const std::string name = Cell(window, 4, 1);
        for (const int column : {1, 0, 3, 1}) {
            ClickHeader(window, column);
            const int row = SelectedRow(window);
            ASSERT_GE(row, 0);
            EXPECT_EQ(Cell(window, row, 1), name);
        }
        EXPECT_EQ(List(window).selectionModel()->selectedIndexes().size(), 6);
        Close(window);
    });
}

TEST_F(KeywordDialog, ShowsTheHelpOfADoubleClickedRow) {
    Show([this](QWidget& window) {
        DoubleClick(window, RowPoint(window, 0));
        EXPECT_EQ(SelectedRow(window), 0);
        EXPECT_EQ(topics, Texts{"function/operator.htm"});  // abs
        DoubleClick(window, RowPoint(window, 8));
        EXPECT_EQ(SelectedRow(window), 8);
        EXPECT_EQ(topics.back(), "sentence/formula/outputkey.htm");  // base16

        // Counted from the uppermost row in view.
        QTableView& list = List(window);
        const KeywordListRows rows;
        for (const int top : {50, 100, list.verticalScrollBar()->maximum()}) {
            SCOPED_TRACE(top);
            list.verticalScrollBar()->setValue(top);
            DoubleClick(window, RowPoint(window, 3));
            EXPECT_EQ(SelectedRow(window), top + 3);
            EXPECT_EQ(topics.back(), rows.TopicOfRow(static_cast<std::size_t>(top + 3)));
        }
        // At the end the uppermost row may be cut off.
        for (int y = list.viewport()->height() - 1; y > list.viewport()->height() - 40; y -= 3) {
            const int row = list.rowAt(y);
            DoubleClick(window, {40, y});
            EXPECT_EQ(SelectedRow(window), row);
        }
        EXPECT_EQ(list.rowAt(list.viewport()->height() - 1), list.model()->rowCount() - 1);
        topics.resize(5);
        // The page of what stands there after a sorting.
        list.verticalScrollBar()->setValue(0);
        ClickHeader(window, 1);
        DoubleClick(window, RowPoint(window, 0));
        EXPECT_EQ(Cell(window, SelectedRow(window), 1), "weekday");
        EXPECT_EQ(topics.back(), "function/normal.htm");
        EXPECT_EQ(topics.size(), 6U);
        EXPECT_TRUE(window.isVisible());
        Close(window);
    });
}

TEST_F(KeywordDialog, FindsTheRowBesideTheColumnsToo) {
    Show([this](QWidget& window) {
        const QTableView& list = List(window);
        const int behindColumns = list.columnViewportPosition(5) + list.columnWidth(5);
        ASSERT_LT(behindColumns + 4, list.viewport()->width());
        DoubleClick(window, {behindColumns + 4, RowPoint(window, 2).y()});
        EXPECT_EQ(SelectedRow(window), 2);
        EXPECT_EQ(topics.size(), 1U);
        // Another button is not for this.
        DoubleClick(window, RowPoint(window, 1), Qt::RightButton);
        EXPECT_EQ(topics.size(), 1U);
        Close(window);
    });
}

TEST_F(KeywordDialog, ChangesNothingByADoubleClickBelowTheLastRow) {
    Show([this](QWidget& window) {
        QTableView& list = List(window);
        const int rowHeight = list.rowHeight(0);
        const int rows = list.model()->rowCount();
        Resize(window, QSize(500, rowHeight * (rows + 7)));
        EXPECT_EQ(list.verticalScrollBar()->maximum(), 0);
        DoubleClick(window, RowPoint(window, rows - 1));
        const int selected = SelectedRow(window);
        EXPECT_EQ(selected, rows - 1);
        for (const QPoint below : {RowPoint(window, rows), QPoint(2, rows * rowHeight),
                                   QPoint(40, list.viewport()->height() - 2)}) {
            QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, below);
            DoubleClick(window, below);
            EXPECT_EQ(SelectedRow(window), selected);
            EXPECT_EQ(topics.size(), 1U);
        }
        Close(window);
    });
}

TEST_F(KeywordDialog, ShowsItsOwnHelp) {
    Show([this](QWidget& window) {
        test::Press(&HelpButton(window));
        EXPECT_EQ(topics, Texts{"tools/allkeywords.htm"});
        EXPECT_TRUE(window.isVisible());
        Close(window);
    });
}

TEST_F(KeywordDialog, StaysOpenOnEnter) {
    Show([this](QWidget& window) {
        for (QWidget* focused : std::initializer_list<QWidget*>{&List(window), &HelpButton(window),
                                                                &CloseButton(window)}) {
            focused->setFocus();
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
                QTest::keyClick(focused, key);
                EXPECT_TRUE(window.isVisible());
            }
        }
        EXPECT_EQ(topics, Texts());
        QTest::keyClick(&window, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
    });
}

TEST_F(KeywordDialog, GoesThroughTheRowsByKeyboard) {
    Show([](QWidget& window) {
        EXPECT_EQ(window.focusWidget(), &List(window));
        QTest::keyClick(&List(window), Qt::Key_Down);
        QTest::keyClick(&List(window), Qt::Key_Down);
        const int row = SelectedRow(window);
        EXPECT_GE(row, 1);
        QTest::keyClick(&List(window), Qt::Key_Up);
        EXPECT_EQ(SelectedRow(window), row - 1);
        QTest::keyClick(&List(window), Qt::Key_Tab);
        EXPECT_EQ(window.focusWidget(), &HelpButton(window));
        QTest::keyClick(&HelpButton(window), Qt::Key_Tab);
        EXPECT_EQ(window.focusWidget(), &CloseButton(window));
        QTest::keyClick(&CloseButton(window), Qt::Key_Space);
        EXPECT_FALSE(window.isVisible());
    });
}

}  // namespace
}  // namespace orvane
