#include "windows/option_dialogs.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QWhatsThis>
#include <string>
#include <vector>

#include "app/main_window.h"
#include "core/calc_parameters.h"
#include "tests/screens/main_window_fixture.h"
#include "tests/support/modal_player.h"
#include "windows/control_ids.h"
#include "windows/look.h"

namespace orvane {
namespace {

constexpr TextColours ownColours = {ColourFrom(10, 20, 30),   ColourFrom(200, 0, 0),
                                    ColourFrom(1, 2, 3),      ColourFrom(255, 255, 0),
                                    ColourFrom(0, 255, 255),  ColourFrom(90, 90, 250),
                                    ColourFrom(250, 128, 114)};
constexpr int tops[] = {7, 24, 41, 58, 75, 92, 109};

QAbstractButton& Button(QWidget& window, int id) {
    return *window.findChild<QAbstractButton*>(QString::number(id));
}
void Press(QWidget& window, int id) { test::Press(&Button(window, id)); }
void Escape(QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }

QImage PictureOf(QWidget& window) { return window.grab().toImage(); }

// The rectangles of a row as the rules for painting it give them.
struct RowPlaces {
    QRect label, swatch, code, band;
};
RowPlaces PlacesOf(QWidget& window, int row) {
    const QRect button = Button(window, 1027 + row).geometry();
    const int top = button.top() + 2;
    const int bottom = button.top() + button.height() - 2;
    const int x0 = 16;
    const int x1 = button.left() - 10;
    const int m = (x0 + x1) / 2 - 6;
    const int n = (m + x1) / 2;
    const auto rect = [&](int left, int right) {
        return QRect(left, top, right - left, bottom - top);
    };
    return {rect(x0, m), rect(m, n - 4), rect(n + 4, x1), rect(0, button.left())};
}

// Where the picture differs from the window's colour.
QRect InkOf(const QImage& picture, const QRect& area) {
    QRect ink;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (picture.pixelColor(x, y) != windowColour) ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

void ExpectSwatch(const QImage& picture, const QRect& swatch, Colour colour) {
    for (int y = 0; y < swatch.height(); ++y) {
        for (int x = 0; x < swatch.width(); ++x) {
            const int fromRight = swatch.width() - 1 - x;
            const int fromBottom = swatch.height() - 1 - y;
            QColor expected = ColourOf(colour);
            if (fromRight == 0 || fromBottom == 0) {
                expected = Qt::black;
            } else if (x == 0 || y == 0) {
                expected = Qt::white;
            } else if (fromRight == 1 || fromBottom == 1) {
                expected = Qt::white;
            } else if (x == 1 || y == 1) {
                expected = Qt::black;
            }
            ASSERT_EQ(picture.pixelColor(swatch.topLeft() + QPoint(x, y)), expected)
                << x << ' ' << y;
        }
    }
}

void ExpectSwatches(QWidget& window, const TextColours& colours) {
    const QImage picture = PictureOf(window);
    for (int row = 0; row < 7; ++row) {
        SCOPED_TRACE(row);
        ExpectSwatch(picture, PlacesOf(window, row).swatch, colours[static_cast<std::size_t>(row)]);
    }
}

class OptionDialogs : public testing::Test {
protected:
    OptionDialogs() {
        owner.resize(600, 400);
        owner.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&owner));
    }

    std::optional<TextColours> Colours(const test::ModalPlayer::Step& step,
                                       const TextColours& colours = ownColours) {
        player.Then(step);
        return ChooseTextColours(&owner, colours, Recorder());
    }
    std::optional<std::int32_t> Fine(std::int32_t locusFine, const test::ModalPlayer::Step& step) {
        player.Then(step);
        return ChooseLocusFine(&owner, locusFine, Recorder());
    }
    ShowTopic Recorder() {
        return [this](QWidget* asking, const QString& topic) {
            EXPECT_EQ(asking, QApplication::activeModalWidget());
            topics.push_back(topic.toStdString());
        };
    }
    // Presses the colour's button and accepts this colour in the chooser.
    void Pick(QWidget& window, int row, QColor colour, QColor expectedStart) {
        player.Then([=](QWidget& opened) {
            auto* const chooser = qobject_cast<QColorDialog*>(&opened);
            ASSERT_NE(chooser, nullptr);
            EXPECT_TRUE(chooser->testOption(QColorDialog::DontUseNativeDialog));
            EXPECT_EQ(chooser->currentColor(), expectedStart);
            chooser->setCurrentColor(colour);
            chooser->accept();
        });
        Press(window, 1027 + row);
        EXPECT_TRUE(player.IsDone());
    }
    void AnswerRestore(QWidget& window, QMessageBox::StandardButton answer) {
        player.Then([=](QWidget& opened) {
            auto* const box = qobject_cast<QMessageBox*>(&opened);
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->windowTitle(), "Message");
            EXPECT_EQ(box->text(), "Restore to default colors?");
            EXPECT_EQ(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
            test::Press(box->button(answer));
        });
        Press(window, 1007);
        EXPECT_TRUE(player.IsDone());
    }

    QWidget owner;
    std::vector<std::string> topics;
    test::ModalPlayer player;
};

TEST_F(OptionDialogs, PutTheColourButtonsInTheirPlaces) {
    Colours([this](QWidget& window) {
        const QFontMetrics metrics(InterfaceFont());
        EXPECT_EQ(window.windowTitle(), "Text color options");
        EXPECT_EQ(window.parentWidget(), &owner);
        EXPECT_TRUE(window.isModal());
        EXPECT_EQ(window.size(), DialogRect(metrics, 0, 0, 228, 130).size());
        for (int row = 0; row < 7; ++row) {
            SCOPED_TRACE(row);
            const QAbstractButton& button = Button(window, 1027 + row);
            EXPECT_EQ(button.pos(), DialogRect(metrics, 151, tops[row], 0, 0).topLeft());
            EXPECT_EQ(button.size(), QPixmap(":/buttons/colour_up.png").size());
            EXPECT_TRUE(window.rect().contains(button.geometry()));
        }
        const std::pair<int, const char*> buttons[] = {
            {1005, "OK"}, {1006, "Cancel"}, {1007, "Restore"}};
        for (const auto& [id, text] : buttons) {
            SCOPED_TRACE(text);
            const QAbstractButton& button = Button(window, id);
            EXPECT_EQ(button.text(), text);
            EXPECT_LT(metrics.horizontalAdvance(text) + 8, button.width());
            EXPECT_TRUE(window.rect().contains(button.geometry()));
            for (int row = 0; row < 7; ++row) {
                EXPECT_FALSE(button.geometry().intersects(Button(window, 1027 + row).geometry()));
            }
        }
        Escape(window);
    });
}

TEST_F(OptionDialogs, PaintARowForEachColour) {
    Colours([](QWidget& window) {
        ExpectSwatches(window, ownColours);
        const QImage picture = PictureOf(window);
        const QFontMetrics metrics(InterfaceFont());
        const char* const labels[] = {"Header keyword", "Common keyword", "Normal text", "String",
                                      "Number",         "Symbol",         "Comment"};
        const char* const codes[] = {"0A 14 1E", "C8 00 00", "01 02 03", "FF FF 00",
                                     "00 FF FF", "5A 5A FA", "FA 80 72"};
        for (int row = 0; row < 7; ++row) {
            SCOPED_TRACE(row);
            const RowPlaces places = PlacesOf(window, row);
            EXPECT_LE(metrics.horizontalAdvance(labels[row]), places.label.width());
            EXPECT_LE(metrics.horizontalAdvance(codes[row]), places.code.width());
            // As many pixels wide as the texts are, at the left and in the middle.
            const QRect label = InkOf(picture, places.label);
            EXPECT_NEAR(label.left(), places.label.left(), 2);
            EXPECT_NEAR(label.width(), metrics.horizontalAdvance(labels[row]), 3);
            EXPECT_NEAR(label.center().y(), places.label.center().y(), 3);
            const QRect code = InkOf(picture, places.code);
            EXPECT_NEAR(code.width(), metrics.horizontalAdvance(codes[row]), 3);
            EXPECT_NEAR(code.center().x(), places.code.center().x(), 2);
            // Nothing between swatch and code, and nothing at the client area's edge.
            const QRect between(QPoint(places.swatch.right() + 1, places.band.top()),
                                QPoint(places.code.left() - 1, places.band.bottom()));
            EXPECT_TRUE(InkOf(picture, between).isNull());
            EXPECT_TRUE(
                InkOf(picture, QRect(0, places.band.top(), 16, places.band.height())).isNull());
        }
        Escape(window);
    });
}

TEST_F(OptionDialogs, ShowAPressedColourButtonByItsOwnPicture) {
    Colours([](QWidget& window) {
        QAbstractButton& button = Button(window, 1030);
        const QImage up = button.grab().toImage();
        const QPoint middle = button.rect().center();
        QTest::mousePress(&button, Qt::LeftButton, {}, middle);
        const QImage down = button.grab().toImage();
        EXPECT_NE(up, down);
        const QImage picture(":/buttons/colour_down.png");
        EXPECT_EQ(down.pixelColor(12, 8), picture.pixelColor(12, 8));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(-20, -20));  // no click
        Escape(window);
    });
}

TEST_F(OptionDialogs, GiveWhatWasChosen) {
    TextColours expected = ownColours;
    expected[3] = ColourFrom(12, 34, 56);
    expected[6] = ColourFrom(255, 0, 255);
    EXPECT_EQ(Colours([&](QWidget& window) {
                  Pick(window, 3, QColor(12, 34, 56), QColor(255, 255, 0));
                  Pick(window, 6, QColor(255, 0, 255), QColor(250, 128, 114));
                  ExpectSwatches(window, expected);
                  Press(window, 1005);
              }),
              expected);
}

TEST_F(OptionDialogs, StartTheChooserWithTheWorkingColour) {
    Colours([&](QWidget& window) {
        Pick(window, 0, QColor(1, 1, 1), QColor(10, 20, 30));
        Pick(window, 0, QColor(2, 2, 2), QColor(1, 1, 1));
        Escape(window);
    });
}

TEST_F(OptionDialogs, PaintOnlyTheBandOfAChangedRow) {
    Colours([&](QWidget& window) {
        const QImage before = PictureOf(window);
        Pick(window, 2, QColor(0, 200, 0), QColor(1, 2, 3));
        const QImage after = PictureOf(window);
        const QRect band = PlacesOf(window, 2).band;
        const QRect besideFocus(0, 0, Button(window, 1027).x(), window.height());
        for (int y = 0; y < besideFocus.height(); ++y) {
            for (int x = 0; x < besideFocus.width(); ++x) {
                if (!band.contains(x, y)) {
                    ASSERT_EQ(before.pixel(x, y), after.pixel(x, y)) << x << ' ' << y;
                }
            }
        }
        Escape(window);
    });
}

TEST_F(OptionDialogs, KeepTheColourWhereTheChooserIsCancelled) {
    EXPECT_EQ(Colours([&](QWidget& window) {
                  player.Then([](QWidget& opened) {
                      auto* const chooser = qobject_cast<QColorDialog*>(&opened);
                      ASSERT_NE(chooser, nullptr);
                      chooser->setCurrentColor(Qt::green);
                      chooser->reject();
                  });
                  Press(window, 1028);
                  ExpectSwatches(window, ownColours);
                  Press(window, 1005);
              }),
              std::nullopt);
}

TEST_F(OptionDialogs, CountAColourPickedBackAsNoChange) {
    EXPECT_EQ(Colours([&](QWidget& window) {
                  Pick(window, 1, QColor(9, 9, 9), QColor(200, 0, 0));
                  Pick(window, 1, QColor(200, 0, 0), QColor(9, 9, 9));
                  Press(window, 1005);
              }),
              std::nullopt);
    EXPECT_EQ(Colours([](QWidget& window) { Press(window, 1005); }), std::nullopt);
}

TEST_F(OptionDialogs, TakeNothingWhereTheyAreCancelled) {
    const test::ModalPlayer::Step ways[] = {[](QWidget& window) { Press(window, 1006); }, Escape,
                                            [](QWidget& window) { window.close(); }};
    for (const auto& way : ways) {
        EXPECT_EQ(Colours([&](QWidget& window) {
                      Pick(window, 1, QColor(9, 9, 9), QColor(200, 0, 0));
                      way(window);
                  }),
                  std::nullopt);
    }
}

TEST_F(OptionDialogs, PressOkByEnter) {
    TextColours expected = ownColours;
    expected[1] = ColourFrom(9, 9, 9);
    EXPECT_EQ(Colours([&](QWidget& window) {
                  Pick(window, 1, QColor(9, 9, 9), QColor(200, 0, 0));
                  QTest::keyClick(&Button(window, 1028), Qt::Key_Return);
              }),
              expected);
}

// A focused button must not do what another one says.
TEST_F(OptionDialogs, PressTheFocusedButtonByEnter) {
    EXPECT_EQ(Colours([&](QWidget& window) {
                  Pick(window, 1, QColor(9, 9, 9), QColor(200, 0, 0));
                  Button(window, 1006).setFocus();
                  QTest::keyClick(&Button(window, 1006), Qt::Key_Return);
                  EXPECT_FALSE(window.isVisible());
              }),
              std::nullopt);
    EXPECT_EQ(Colours([&](QWidget& window) {
                  player.Then([](QWidget& opened) {
                      test::Press(qobject_cast<QMessageBox*>(&opened)->button(QMessageBox::Yes));
                  });
                  Button(window, 1007).setFocus();
                  QTest::keyClick(&Button(window, 1007), Qt::Key_Enter);
                  EXPECT_TRUE(player.IsDone());
                  ExpectSwatches(window, defaultTextColours);
                  Button(window, 1005).setFocus();
                  QTest::keyClick(&Button(window, 1005), Qt::Key_Return);
              }),
              defaultTextColours);
}

TEST_F(OptionDialogs, RestoreTheDefaults) {
    EXPECT_EQ(Colours([&](QWidget& window) {
                  AnswerRestore(window, QMessageBox::Yes);
                  ExpectSwatches(window, defaultTextColours);
                  EXPECT_TRUE(window.isVisible());
                  Press(window, 1005);
              }),
              defaultTextColours);
    EXPECT_EQ(Colours([&](QWidget& window) {
                  AnswerRestore(window, QMessageBox::Yes);
                  Press(window, 1006);
              }),
              std::nullopt);
    EXPECT_EQ(Colours([&](QWidget& window) {
                  AnswerRestore(window, QMessageBox::No);
                  ExpectSwatches(window, ownColours);
                  Press(window, 1005);
              }),
              std::nullopt);
    // Back to where they were.
    EXPECT_EQ(Colours(
                  [&](QWidget& window) {
                      Pick(window, 4, Qt::green, QColor(128, 0, 128));
                      AnswerRestore(window, QMessageBox::Yes);
                      Press(window, 1005);
                  },
                  defaultTextColours),
              std::nullopt);
}

// The title bar's help

TEST_F(OptionDialogs, ShowTheirHelpByTheTitleBarAndByF1) {
    const auto askForHelp = [this](QWidget& window, const char* topic) {
        EXPECT_TRUE(window.windowFlags() & Qt::WindowContextHelpButtonHint);
        QWhatsThis::enterWhatsThisMode();  // what the button in the title bar does
        EXPECT_FALSE(QWhatsThis::inWhatsThisMode());
        EXPECT_EQ(topics, std::vector<std::string>{topic});
        QTest::keyClick(&window, Qt::Key_F1);
        ASSERT_EQ(topics.size(), 2U);
        EXPECT_EQ(topics[1], topic);
        EXPECT_TRUE(window.isVisible());
        topics.clear();
    };
    EXPECT_EQ(Colours([&](QWidget& window) {
                  askForHelp(window, "options/textcolor.htm");
                  QTest::keyClick(&Button(window, 1027), Qt::Key_F1);
                  EXPECT_EQ(topics, std::vector<std::string>{"options/textcolor.htm"});
                  topics.clear();
                  Escape(window);
              }),
              std::nullopt);
    EXPECT_EQ(Fine(3,
                   [&](QWidget& window) {
                       askForHelp(window, "options/genoption.htm");
                       Escape(window);
                   }),
              std::nullopt);
}

// Options

QComboBox& FineList(QWidget& window) { return *window.findChild<QComboBox*>("1030"); }

TEST_F(OptionDialogs, OfferTwentyRowsOfFineness) {
    Fine(0, [this](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), "Options");
        EXPECT_EQ(window.parentWidget(), &owner);
        EXPECT_EQ(window.size(), DialogRect(QFontMetrics(InterfaceFont()), 0, 0, 137, 93).size());
        const QComboBox& list = FineList(window);
        ASSERT_EQ(list.count(), 20);
        EXPECT_EQ(list.itemText(0), "0 - best");
        for (int row = 1; row < 20; ++row) EXPECT_EQ(list.itemText(row), QString::number(row));
        EXPECT_EQ(list.currentText(), "0 - best");
        EXPECT_FALSE(list.isEditable());
        ASSERT_EQ(window.findChildren<QGroupBox*>().size(), 1);
        EXPECT_EQ(window.findChild<QGroupBox*>()->title(), "Draw locus function");
        ASSERT_EQ(window.findChildren<QLabel*>().size(), 1);
        EXPECT_EQ(window.findChild<QLabel*>()->text(), "Fine");
        EXPECT_EQ(Button(window, 1031).text(), "Apply");
        const QRect group = window.findChild<QGroupBox*>()->geometry();
        EXPECT_TRUE(group.contains(list.geometry()));
        EXPECT_TRUE(group.contains(window.findChild<QLabel*>()->geometry()));
        EXPECT_FALSE(group.intersects(Button(window, 1031).geometry()));
        Escape(window);
    });
}

TEST_F(OptionDialogs, ApplyTheChosenRow) {
    for (int start = 0; start < 20; ++start) {
        SCOPED_TRACE(start);
        EXPECT_EQ(Fine(start,
                       [&](QWidget& window) {
                           EXPECT_EQ(FineList(window).currentIndex(), start);
                           FineList(window).setCurrentIndex(19 - start);
                           Press(window, 1031);
                       }),
                  19 - start);
    }
}

TEST_F(OptionDialogs, SelectNoRowForANumberWithoutOne) {
    for (const std::int32_t locusFine : {-1, 20, 74}) {
        SCOPED_TRACE(locusFine);
        const auto apply = [](QWidget& window) {
            EXPECT_EQ(FineList(window).currentIndex(), -1);
            Press(window, 1031);
        };
        EXPECT_EQ(Fine(locusFine, apply), std::nullopt);
    }
}

TEST_F(OptionDialogs, EndOnlyByApplyOrTheCloseBox) {
    const test::ModalPlayer::Step ways[] = {Escape, [](QWidget& window) { window.close(); }};
    for (const auto& way : ways) {
        EXPECT_EQ(Fine(5,
                       [&](QWidget& window) {
                           FineList(window).setCurrentIndex(7);
                           for (QWidget* focused : std::initializer_list<QWidget*>{
                                    &FineList(window), &Button(window, 1031), &window}) {
                               focused->setFocus();
                               QTest::keyClick(focused, Qt::Key_Return);
                               QTest::keyClick(focused, Qt::Key_Enter);
                               EXPECT_TRUE(window.isVisible());
                           }
                           way(window);
                       }),
                  std::nullopt);
    }
}

// In the program

class OptionCommands : public MainWindowTest {
protected:
    test::ModalPlayer player;
};

TEST_F(OptionCommands, GiveTheEditorItsColoursAndWriteThemAtTheEnd) {
    MainWindow& shown = Start();
    shown.Editor().SetText("text: a;");
    const QImage before = shown.Editor().View().viewport()->grab().toImage();
    const std::string settings = Read("Setting/Orvane.set");
    player.Then([this](QWidget& window) {
        player.Then([](QWidget& opened) {
            auto* const chooser = qobject_cast<QColorDialog*>(&opened);
            ASSERT_NE(chooser, nullptr);
            chooser->setCurrentColor(QColor(0, 0, 255));
            chooser->accept();
        });
        Press(window, 1027);
        Press(window, 1005);
    });
    shown.RunCommand(ids::command::textColours);
    TextColours expected = defaultTextColours;
    expected[0] = ColourFrom(0, 0, 255);
    EXPECT_EQ(shown.Editor().Colours(), expected);
    EXPECT_NE(shown.Editor().View().viewport()->grab().toImage(), before);
    EXPECT_EQ(Read("Setting/Orvane.set"), settings);
    End();
    EXPECT_NE(Read("Setting/Orvane.set"), settings);
    EXPECT_EQ(Start().Editor().Colours(), expected);
}

TEST_F(OptionCommands, LeaveTheEditorsColoursAloneAfterRestoreAndCancel) {
    MainWindow& shown = Start();
    shown.Editor().SetColours(ownColours);
    player.Then([this](QWidget& window) {
        player.Then([](QWidget& opened) {
            test::Press(qobject_cast<QMessageBox*>(&opened)->button(QMessageBox::Yes));
        });
        Press(window, 1007);
        Press(window, 1006);
    });
    shown.RunCommand(ids::command::textColours);
    EXPECT_EQ(shown.Editor().Colours(), ownColours);
}

TEST_F(OptionCommands, SetTheFinenessOfCurves) {
    MainWindow& shown = Start();
    EXPECT_EQ(calcParameters.locusFine, 0);
    const std::string settings = Read("Setting/Orvane.set");
    player.Then([](QWidget& window) {
        FineList(window).setCurrentIndex(12);
        Press(window, 1031);
    });
    shown.RunCommand(ids::command::generalOptions);
    EXPECT_EQ(calcParameters.locusFine, 12);
    player.Then([](QWidget& window) {
        EXPECT_EQ(FineList(window).currentIndex(), 12);
        FineList(window).setCurrentIndex(3);
        Escape(window);
    });
    shown.RunCommand(ids::command::generalOptions);
    EXPECT_EQ(calcParameters.locusFine, 12);
    EXPECT_EQ(Read("Setting/Orvane.set"), settings);
}

}  // namespace
}  // namespace orvane
