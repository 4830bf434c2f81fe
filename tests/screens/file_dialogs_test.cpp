#include "windows/file_dialogs.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/archive_folder.h"
#include "tests/support/modal_player.h"
#include "windows/look.h"

namespace orvane {
namespace {

using test::Entry;
using test::Preamble;
using test::ThreeSheets;
using Names = std::vector<std::string>;

template <typename Widget = QPushButton>
Widget& Control(QWidget& window, int id) {
    return *window.findChild<Widget*>(QString::number(id));
}
QListView& List(QWidget& window) { return Control<QListView>(window, 1014); }
QLineEdit& NameBox(QWidget& window) { return Control<QLineEdit>(window, 1016); }

void Click(QWidget& window, int id) { test::Press(&Control(window, id)); }
void ClickRow(QWidget& window, int row) {
    QListView& list = List(window);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualRect(list.model()->index(row, 0)).center());
}
void DoubleClickAt(QWidget& window, const QPoint& point) {
    QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, point);
}
QPoint BelowTheRows(QWidget& window) {
    return List(window).viewport()->rect().bottomLeft() + QPoint(20, -5);
}

Names RowsOf(QWidget& window) {
    Names names;
    const QAbstractItemModel& rows = *List(window).model();
    for (int row = 0; row < rows.rowCount(); ++row) {
        names.push_back(rows.index(row, 0).data().toString().toStdString());
    }
    return names;
}
int SelectedRow(QWidget& window) {
    const QModelIndexList selected = List(window).selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.first().row();
}

struct ControlRow {
    int id;
    const char* text;
    int left, top, width, height;
    bool isInOpenMode, isInSaveMode;
};
constexpr ControlRow controlRows[] = {
    {1016, "", 7, 7, 326, 12, true, true},          {1014, "", 7, 29, 326, 254, true, true},
    {1033, "Save as", 343, 7, 40, 15, false, true}, {1030, "Open", 343, 65, 40, 15, true, false},
    {1031, "Rename", 343, 86, 40, 15, true, false}, {1032, "Delete", 343, 107, 40, 15, true, false},
    {1011, "", 352, 151, 18, 14, true, true},       {1012, "", 352, 166, 18, 14, true, true},
};

class FileDialogsTest : public testing::Test {
protected:
    FileDialogsTest() {
        archive.Write(ThreeSheets());
        owner.resize(900, 700);
        owner.show();
        // A window manager that has just started may miss its first window.
        while (!QTest::qWaitForWindowExposed(&owner, 2000)) {
            owner.hide();
            owner.show();
        }
    }

    // Runs the dialog with the user's part in it.
    std::optional<ChosenSheet> Open(const test::ModalPlayer::Step& step,
                                    const std::string& currentName = "") {
        player.Then(step);
        return dialogs.ShowOpen(archive.Path(), currentName,
                                [this](const std::string& name) { renames.push_back(name); });
    }
    std::optional<std::string> Save(const test::ModalPlayer::Step& step,
                                    const std::string& text = "text") {
        player.Then(step);
        return dialogs.ShowSave(archive.Path(), "first", text);
    }
    std::optional<ChosenSheet> Samples(const test::ModalPlayer::Step& step) {
        player.Then(step);
        return dialogs.ShowSamples(archive.Path());
    }
    // The next box, which has this text.
    void Answer(QMessageBox::StandardButton button, const QString& text) {
        player.Then([=](QWidget& window) {
            auto* const box = qobject_cast<QMessageBox*>(&window);
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->windowTitle(), "Message");
            EXPECT_EQ(box->text(), text);
            test::Press(box->button(button));
        });
    }
    static void Escape(QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }

    test::ArchiveFolder archive;
    QWidget owner;
    FileDialogs dialogs{&owner};
    Names renames;
    test::ModalPlayer player;
};

// Places

TEST_F(FileDialogsTest, PutEveryControlInItsPlace) {
    const QFontMetrics metrics(InterfaceFont());
    for (const bool isSaveMode : {false, true}) {
        SCOPED_TRACE(isSaveMode);
        const auto look = [&](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), isSaveMode ? "Save as ..." : "File");
            EXPECT_EQ(window.size(), DialogRect(metrics, 0, 0, 390, 290).size());
            EXPECT_EQ(window.minimumSize(), window.maximumSize());
            EXPECT_EQ(window.parentWidget(), &owner);
            for (const ControlRow& row : controlRows) {
                SCOPED_TRACE(row.id);
                QWidget& control = Control<QWidget>(window, row.id);
                QRect place = DialogRect(metrics, row.left, row.top, row.width, row.height);
                if (row.id == 1033 && isSaveMode) {
                    place.moveTop(window.height() / 2 - 2 * place.height());
                }
                EXPECT_EQ(control.geometry(), place);
                EXPECT_EQ(control.isVisible(), isSaveMode ? row.isInSaveMode : row.isInOpenMode);
                const auto* const button = qobject_cast<QPushButton*>(&control);
                if (button == nullptr) continue;
                EXPECT_EQ(button->text(), row.text);
                EXPECT_LT(metrics.horizontalAdvance(button->text()) + 8, button->width());
                EXPECT_LE(metrics.height() + 4, button->height());
            }
            EXPECT_EQ(RowsOf(window), (Names{"first", "second", "third"}));
            EXPECT_EQ(SelectedRow(window), -1);
            EXPECT_EQ(NameBox(window).text(), "");
            Escape(window);
        };
        if (isSaveMode) {
            EXPECT_EQ(Save(look), std::nullopt);
        } else {
            EXPECT_EQ(Open(look), std::nullopt);
        }
    }
}

TEST_F(FileDialogsTest, PutTheSamplesInAWindowThatCanBeResized) {
    const QFontMetrics metrics(InterfaceFont());
    Samples([&](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), "Sample files");
        const QRect list = DialogRect(metrics, 7, 7, 357, 230);
        const QRect button = DialogRect(metrics, 373, 104, 40, 15);
        const QSize size = DialogRect(metrics, 0, 0, 420, 244).size();
        EXPECT_EQ(window.size(), size);
        for (const QSize& next : {size + QSize(100, 80), size - QSize(50, 60)}) {
            window.resize(next);
            EXPECT_TRUE(QTest::qWaitFor([&] { return window.size() == next; }));
            EXPECT_EQ(List(window).geometry(), list);
            EXPECT_EQ(Control(window, 1030).geometry(), button);
        }
        EXPECT_EQ(Control(window, 1030).text(), "Open");
        EXPECT_EQ(window.findChildren<QPushButton*>().size(), 1);
        Escape(window);
    });
}

// Opening

TEST_F(FileDialogsTest, OpenByButtonDoubleClickAndEnter) {
    const std::pair<const char*, test::ModalPlayer::Step> ways[] = {
        {"button", [](QWidget& window) { Click(window, 1030); }},
        {"double click",
         [](QWidget& window) {
             QListView& list = List(window);
             DoubleClickAt(window, list.visualRect(list.model()->index(1, 0)).center());
         }},
        {"Enter in the list",
         [](QWidget& window) { QTest::keyClick(&List(window), Qt::Key_Return); }},
        {"Enter in the box",
         [](QWidget& window) { QTest::keyClick(&NameBox(window), Qt::Key_Enter); }},
        // No button but the main one answers to Enter.
        {"Enter on another button",
         [](QWidget& window) {
             Control(window, 1030).setFocus();
             QTest::keyClick(&Control(window, 1030), Qt::Key_Return);
         }},
    };
    for (const auto& way : ways) {
        SCOPED_TRACE(way.first);
        const auto open = [&](QWidget& window) {
            ClickRow(window, 1);
            EXPECT_EQ(SelectedRow(window), 1);
            way.second(window);
        };
        EXPECT_EQ(Open(open), (ChosenSheet{"second", "2;2"}));
        if (way.first == std::string("Enter in the box")) continue;
        EXPECT_EQ(Samples(open), (ChosenSheet{"second", "2;2"}));
    }
    EXPECT_EQ(archive.Read(), ThreeSheets());
}

TEST_F(FileDialogsTest, PressTheMainButtonByEnterWhereAnotherOneHasTheFocus) {
    EXPECT_EQ(Open([](QWidget& window) {
                  ClickRow(window, 2);
                  Control(window, 1032).setFocus();
                  QTest::keyClick(&Control(window, 1032), Qt::Key_Return);
              }),
              (ChosenSheet{"third", "3\n3"}));
    EXPECT_EQ(archive.Read(), ThreeSheets());
}

TEST_F(FileDialogsTest, SayThatNothingIsSelected) {
    struct Row {
        int button;
        const char* text;
    };
    const Row rows[] = {{1030, "Select a file to open"},
                        {1031, "Please select a file to rename"},
                        {1032, "Select a file to delete"},
                        {1011, "Select a file for moving"},
                        {1012, "Select a file for moving"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Open([&](QWidget& window) {
            Answer(QMessageBox::Ok, row.text);
            Click(window, row.button);
            EXPECT_TRUE(player.IsDone());
            EXPECT_TRUE(window.isVisible());
            Escape(window);
        });
    }
}

TEST_F(FileDialogsTest, TakeADoubleClickBesideTheRowsForNothingExceptAmongSamples) {
    EXPECT_EQ(Open([](QWidget& window) {
                  DoubleClickAt(window, BelowTheRows(window));
                  ClickRow(window, 0);
                  DoubleClickAt(window, BelowTheRows(window));
                  EXPECT_EQ(SelectedRow(window), 0);
                  EXPECT_TRUE(window.isVisible());
                  Escape(window);
              }),
              std::nullopt);
    EXPECT_EQ(Samples([this](QWidget& window) {
                  Answer(QMessageBox::Ok, "Select a file to open");
                  DoubleClickAt(window, BelowTheRows(window));
                  EXPECT_TRUE(player.IsDone());
                  ClickRow(window, 0);
                  DoubleClickAt(window, BelowTheRows(window));
              }),
              (ChosenSheet{"first", "1"}));
}

// The list

TEST_F(FileDialogsTest, CopyTheNameOfAChosenRow) {
    Open([](QWidget& window) {
        ClickRow(window, 1);
        EXPECT_EQ(NameBox(window).text(), "second");
        QTest::keyClicks(&NameBox(window), " typed");
        EXPECT_EQ(NameBox(window).text(), "second typed");
        ClickRow(window, 1);
        EXPECT_EQ(NameBox(window).text(), "second");
        QTest::keyClick(&List(window), Qt::Key_Down);
        EXPECT_EQ(NameBox(window).text(), "third");
        QTest::mouseClick(List(window).viewport(), Qt::LeftButton, Qt::ControlModifier,
                          List(window).visualRect(List(window).currentIndex()).center());
        EXPECT_EQ(SelectedRow(window), 2);
        Escape(window);
    });
}

TEST_F(FileDialogsTest, StartAtTheFirstRowByKeyboard) {
    for (const auto key : {Qt::Key_Down, Qt::Key_Up}) {
        EXPECT_EQ(Open([&](QWidget& window) {
                      EXPECT_EQ(window.focusWidget(), &NameBox(window));
                      QTest::keyClick(&NameBox(window), Qt::Key_Tab);
                      EXPECT_EQ(window.focusWidget(), &List(window));
                      EXPECT_EQ(SelectedRow(window), -1);
                      QTest::keyClick(&List(window), key);
                      EXPECT_EQ(SelectedRow(window), 0);
                      EXPECT_EQ(NameBox(window).text(), "first");
                      QTest::keyClick(&List(window), Qt::Key_Return);
                  }),
                  (ChosenSheet{"first", "1"}));
    }
}

TEST_F(FileDialogsTest, ShowEveryNameOnOneLine) {
    const std::string name = "a\r\nb\tc\x01\x81";
    const std::string longName(100'000, 'W');
    archive.Write(Entry(name, "1") + Entry("", "2") + Entry(longName, "3") +
                  Entry("\xE4 <b>&x \x80", "4"));
    EXPECT_EQ(Open([&](QWidget& window) {
                  const Names rows = RowsOf(window);
                  ASSERT_EQ(rows.size(), 4U);
                  EXPECT_EQ(rows[0], "a\u25A1\u25A1b\u25A1c\u25A1\u25A1");
                  EXPECT_EQ(rows[1], "");
                  EXPECT_EQ(rows[3], "\u00E4 <b>&x \u20AC");
                  QListView& list = List(window);
                  const QRect first = list.visualRect(list.model()->index(0, 0));
                  for (int row = 0; row < 4; ++row) {
                      EXPECT_EQ(list.visualRect(list.model()->index(row, 0)),
                                first.translated(0, row * first.height()));
                  }
                  EXPECT_LE(first.width(), list.viewport()->width());
                  ClickRow(window, 2);
                  ClickRow(window, 0);
                  Click(window, 1030);
              }),
              (ChosenSheet{name, "1"}));
}

TEST_F(FileDialogsTest, KeepSelectionAndPlaceInALongList) {
    std::string bytes = Preamble();
    for (int number = 0; number < 5000; ++number) bytes += Entry(std::to_string(number), "text");
    archive.Write(bytes);
    Open([this](QWidget& window) {
        QListView& list = List(window);
        list.setCurrentIndex(list.model()->index(2500, 0));
        const auto top = [&] { return list.visualRect(list.model()->index(2500, 0)).top(); };
        const int topBefore = top();
        EXPECT_TRUE(
            list.viewport()->rect().contains(list.visualRect(list.model()->index(2500, 0))));
        Click(window, 1011);
        EXPECT_EQ(SelectedRow(window), 2499);
        EXPECT_EQ(list.model()->index(2499, 0).data().toString(), "2500");
        Answer(QMessageBox::Yes, "delete the file:\n2500 ?");
        Click(window, 1032);
        EXPECT_EQ(SelectedRow(window), 2499);
        EXPECT_EQ(NameBox(window).text(), "2499");
        EXPECT_EQ(top(), topBefore);
        QTest::keyClick(&list, Qt::Key_End);
        EXPECT_EQ(SelectedRow(window), 4998);
        Escape(window);
    });
}

// Changing the archive

TEST_F(FileDialogsTest, RenameTheOpenSheetAfterYes) {
    EXPECT_EQ(Open(
                  [this](QWidget& window) {
                      ClickRow(window, 0);
                      QTest::keyClick(&NameBox(window), Qt::Key_A, Qt::ControlModifier);
                      QTest::keyClicks(&NameBox(window), " new ");
                      const QString question =
                          "The file is currently in open,do you want to rename it?";
                      Answer(QMessageBox::No, question);
                      Click(window, 1031);
                      EXPECT_EQ(renames, Names{});
                      EXPECT_EQ(RowsOf(window)[0], "first");
                      Answer(QMessageBox::Yes, question);
                      Click(window, 1031);
                      EXPECT_EQ(renames, Names{"new"});
                      EXPECT_EQ(RowsOf(window), (Names{"new", "second", "third"}));
                      EXPECT_EQ(SelectedRow(window), 0);
                      EXPECT_EQ(NameBox(window).text(), "new");
                      Escape(window);
                  },
                  "first"),
              std::nullopt);
    EXPECT_EQ(archive.Read(),
              Preamble() + Entry("new", "1") + Entry("second", "2;2") + Entry("third", "3\n3"));
}

TEST_F(FileDialogsTest, DeleteAfterYes) {
    Open(
        [this](QWidget& window) {
            ClickRow(window, 1);
            Answer(QMessageBox::Ok,
                   "the file: second\nis currently in open and can not be deleted.");
            Click(window, 1032);
            ClickRow(window, 2);
            Answer(QMessageBox::No, "delete the file:\nthird ?");
            Click(window, 1032);
            EXPECT_EQ(RowsOf(window).size(), 3U);
            Answer(QMessageBox::Yes, "delete the file:\nthird ?");
            Click(window, 1032);
            EXPECT_EQ(RowsOf(window), (Names{"first", "second"}));
            EXPECT_EQ(SelectedRow(window), 1);
            EXPECT_EQ(NameBox(window).text(), "second");
            Escape(window);
        },
        "second");
    EXPECT_EQ(archive.Read(), Preamble() + Entry("first", "1") + Entry("second", "2;2"));
}

TEST_F(FileDialogsTest, KeepTheNewOrderWhenTheyAreClosed) {
    Open([](QWidget& window) {
        ClickRow(window, 2);
        Click(window, 1011);
        EXPECT_EQ(RowsOf(window), (Names{"first", "third", "second"}));
        EXPECT_EQ(SelectedRow(window), 1);
        Click(window, 1011);
        Click(window, 1011);
        Click(window, 1012);
        EXPECT_EQ(SelectedRow(window), 1);
        window.close();
    });
    EXPECT_EQ(archive.Read(),
              Preamble() + Entry("first", "1") + Entry("third", "3\n3") + Entry("second", "2;2"));
}

TEST_F(FileDialogsTest, SaveByButtonAndByEnter) {
    EXPECT_EQ(Save([](QWidget& window) {
                  QTest::keyClicks(&NameBox(window), "  by button ");
                  Click(window, 1033);
              }),
              "by button");
    EXPECT_EQ(Save([this](QWidget& window) {
                  QTest::keyClicks(&NameBox(window), "BY button");
                  Answer(QMessageBox::Ok, "The file name has been used,please input another name.");
                  QTest::keyClick(&NameBox(window), Qt::Key_Return);
                  EXPECT_TRUE(window.isVisible());
                  QTest::keyClicks(&NameBox(window), "s");
                  QTest::keyClick(&NameBox(window), Qt::Key_Return);
              }),
              "BY buttons");
    EXPECT_EQ(archive.Read(),
              ThreeSheets() + Entry("by button", "text") + Entry("BY buttons", "text"));
}

TEST_F(FileDialogsTest, SaveUnderNamesOfTheCodePage) {
    struct Row {
        const char* typed;  // UTF-8
        const char* name;
    };
    constexpr Row rows[] = {
        {"\u00E4\u20AC\u0178", "\xE4\x80\x9F"},
        {"\u65E5 \u03B1 \U0001F600", "? ? ?"},
        {"two\nlines\r\n", "two lines"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        archive.Write("");
        EXPECT_EQ(Save([&](QWidget& window) {
                      NameBox(window).insert(QString(row.typed));  // as pasting does
                      Click(window, 1033);
                  }),
                  row.name);
        EXPECT_EQ(archive.Read(), Entry(row.name, "text"));
    }
}

TEST_F(FileDialogsTest, CloseInSaveModeWithTheSheetThatWasDoubleClicked) {
    EXPECT_EQ(Save([](QWidget& window) {
                  QListView& list = List(window);
                  ClickRow(window, 1);
                  EXPECT_EQ(NameBox(window).text(), "second");
                  DoubleClickAt(window, list.visualRect(list.model()->index(1, 0)).center());
              }),
              "second");
    EXPECT_EQ(archive.Read(), ThreeSheets());
}

}  // namespace
}  // namespace orvane
