#include "locus/locus_dialog.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QPushButton>
#include <limits>
#include <string>

#include "locus/plot_pictures.h"
#include "tests/screens/locus_dialog_fixture.h"
#include "tests/screens/main_window_fixture.h"
#include "windows/control_ids.h"
#include "windows/look.h"

namespace orvane {
namespace {

namespace id = ids::locusWindow;

constexpr QSize sizes[] = {{680, 540}, {901, 433}, {377, 612}};
constexpr int edgesOfThePage = 7;  // the rings and the sunken edges around a page

QImage ImageOf(QWidget& widget) {
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

// The smallest rectangle with everything in it that is not background.
QRect InkOf(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != windowColour) ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

QImage TextOn(QSize size, QPoint baseline, const QString& text) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(windowColour);
    QPainter painter(&image);
    painter.setFont(InterfaceFont());
    painter.drawText(baseline, text);
    return image;
}

class LocusDialogTest : public LocusDialogFixture {};

// Before any calculation

TEST_F(LocusDialogTest, TellsWhereHelpIsBeforeAnyCalculation) {
    const QString text = "Please click button Help for assistance";
    const QFontMetrics metrics(InterfaceFont());
    Run([&](QWidget& window) {
        EXPECT_EQ(window.windowTitle(), "Locus");
        auto& help = ControlOf<QPushButton>(window, id::helpButton);
        EXPECT_EQ(help.text(), "Help");
        for (const QSize& size : sizes) {
            SCOPED_TRACE(size.width());
            Resize(window, size);
            EXPECT_TRUE(help.isVisible());
            const QPoint corner(size.width() / 2 - help.width() / 2, size.height() / 2);
            EXPECT_EQ(help.pos(), corner);
            EXPECT_LT(metrics.horizontalAdvance("Help") + 8, help.width());

            QWidget& tabs = ControlOf(window, id::tabControl);
            EXPECT_FALSE(tabs.isVisible());
            EXPECT_FALSE(tabs.geometry().intersects(window.rect()));
            EXPECT_TRUE(ShownPages(window).empty());

            // Nothing but the text stands above the button.
            const QSize above(size.width(), size.height() / 2);
            const QImage image = ImageOf(window).copy(QRect(QPoint(), above));
            const int left = (size.width() - metrics.horizontalAdvance(text)) / 2;
            const int baseline = size.height() / 2 - 20 - metrics.descent();
            EXPECT_EQ(image, TextOn(above, {left, baseline}, text));
            const QRect ink = InkOf(image);
            EXPECT_LE(ink.bottom(), size.height() / 2 - 21);
            EXPECT_GE(ink.bottom(), size.height() / 2 - 24);
            EXPECT_LE(std::abs(ink.left() - (size.width() - 1 - ink.right())), 2);
        }
        Escape(window);
    });
}

TEST_F(LocusDialogTest, ShowsTheTopicOfTheCurvesByHelp) {
    Run([&](QWidget& window) {
        test::Press(&ControlOf<QPushButton>(window, id::helpButton));
        ASSERT_EQ(asked.size(), 1U);
        EXPECT_EQ(asked[0].first, &window);
        EXPECT_EQ(asked[0].second, "function/variable/locus.htm");
        EXPECT_TRUE(window.isVisible());
        Escape(window);
    });
}

// Only the owner has to wait: the help window can be read meanwhile.
TEST_F(LocusDialogTest, HoldsItsOwnerUntilItIsClosed) {
    Run([&](QWidget& window) {
        EXPECT_TRUE(window.isModal());
        EXPECT_EQ(window.windowModality(), Qt::WindowModal);
        EXPECT_EQ(window.parentWidget(), &owner);
        EXPECT_LT(window.minimumSizeHint().width(), window.width());
        EXPECT_NE(window.minimumSize(), window.maximumSize());
        Escape(window);
        EXPECT_FALSE(window.isVisible());
    });
}

// Tabs and pages

TEST_F(LocusDialogTest, TitlesATabForEachCurveInTheOrderOfTheStore) {
    AddThree();
    Add({2, LocusKind::xy, {{1, 1}}});
    Add({1, LocusKind::polar, {}});
    Run([](QWidget& window) {
        const QTabBar& tabs = TabsOf(window);
        std::vector<std::string> titles;
        for (int index = 0; index < tabs.count(); ++index) {
            titles.push_back(tabs.tabText(index).toStdString());
        }
        EXPECT_EQ(titles, (std::vector<std::string>{"1: xy", "3: polar", "12: param", "3: xy",
                                                    "2: polar"}));
        EXPECT_EQ(tabs.currentIndex(), 0);
        Escape(window);
    });
}

TEST_F(LocusDialogTest, ShowsThePageOfThePressedTabAlone) {
    AddThree();
    Run([&](QWidget& window) {
        QTabBar& tabs = TabsOf(window);
        const auto expectPage = [&](int index) {
            SCOPED_TRACE(index);
            EXPECT_EQ(tabs.currentIndex(), index);
            LocusPage& page = PageOf(window);
            EXPECT_EQ(ImageOf(page), PlotImage(store[index], page.size(), 2));
        };
        expectPage(0);
        for (const int index : {2, 0, 1, 2}) {
            QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(index).center());
            expectPage(index);
        }
        QTest::keyClick(&tabs, Qt::Key_Left);
        expectPage(1);
        Escape(window);
    });
}

TEST_F(LocusDialogTest, ComesUpWithTheFirstPage) {
    AddThree();
    for (int opening = 0; opening < 2; ++opening) {
        Run([&](QWidget& window) {
            EXPECT_EQ(TabsOf(window).currentIndex(), 0);
            LocusPage& page = PageOf(window);
            EXPECT_EQ(ImageOf(page), PlotImage(store[0], page.size(), 2));
            TabsOf(window).setCurrentIndex(2);
            Escape(window);
        });
    }
}

TEST_F(LocusDialogTest, PlacesTabsAndPagesAnewAtEverySize) {
    AddThree();
    Run([&](QWidget& window) {
        for (const QSize& size : sizes) {
            SCOPED_TRACE(size.width());
            Resize(window, size);
            EXPECT_FALSE(ControlOf(window, id::helpButton).isVisible());
            QWidget& control = ControlOf(window, id::tabControl);
            EXPECT_TRUE(control.isVisible());
            EXPECT_EQ(control.geometry(), QRect(10, 10, size.width() - 20, size.height() - 20));

            QTabBar& tabs = TabsOf(window);
            const int header = tabs.height();
            EXPECT_EQ(tabs.mapTo(&window, QPoint()), QPoint(10, 10));
            EXPECT_EQ(header, tabs.tabRect(0).height());
            const QRect page(12, 10 + header + 2 + 2, size.width() - 24,
                             size.height() - 20 - header - 2 - 4);
            for (const int index : {1, 2, 0}) {
                tabs.setCurrentIndex(index);
                EXPECT_EQ(PageOf(window).geometry(), page);
            }
        }
        Escape(window);
    });
}

TEST_F(LocusDialogTest, StandsAWindowThatIsTooSmallForAPage) {
    AddThree();
    Run([&](QWidget& window) {
        for (const QSize& size : {QSize(60, 40), QSize(30, 300), QSize(200, 25)}) {
            window.resize(size);
            QCoreApplication::processEvents();
            EXPECT_FALSE(window.grab().isNull());
        }
        Escape(window);
    });
}

TEST_F(LocusDialogTest, SinksTheTabControlIntoAFrame) {
    AddThree();
    Run([&](QWidget& window) {
        for (const QSize& size : sizes) {
            SCOPED_TRACE(size.width());
            Resize(window, size);
            const QImage image = ImageOf(window);
            const QColor dark = window.palette().color(QPalette::Dark);
            const QColor light = window.palette().color(QPalette::Light);
            ASSERT_LT(dark.lightness(), windowColour.lightness());
            ASSERT_GT(light.lightness(), windowColour.lightness());
            const QPoint middle(size.width() / 2, size.height() / 2);
            const int right = size.width() - 10;  // the first pixel outside
            const int bottom = size.height() - 10;
            for (const int out : {1, 2}) {
                EXPECT_EQ(image.pixel(10 - out, middle.y()), dark.rgb());
                EXPECT_EQ(image.pixel(middle.x(), 10 - out), dark.rgb());
                EXPECT_EQ(image.pixel(right - 1 + out, middle.y()), light.rgb());
                EXPECT_EQ(image.pixel(middle.x(), bottom - 1 + out), light.rgb());
            }
            for (const QPoint& beside :
                 {QPoint(7, middle.y()), QPoint(middle.x(), 7), QPoint(right + 2, middle.y()),
                  QPoint(middle.x(), bottom + 2)}) {
                EXPECT_EQ(image.pixelColor(beside), windowColour);
            }
        }
        Escape(window);
    });
}

// What pages show

TEST_F(LocusDialogTest, ShowsPagesWithoutACurve) {
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    Add({0, LocusKind::xy, {}});
    LocusSet& stopped = Add({1, LocusKind::polar, {}});
    stopped.stoppedEarly = true;
    stopped.lastParameter = -0.25;
    store.Add(2, LocusKind::parametric);  // its sweep failed, so it has no ranges
    Add({3, LocusKind::xy, {{0, 0}}});
    Add({4, LocusKind::xy, {{nowhere, nowhere}}});
    Run([&](QWidget& window) {
        for (int index = 0; index < store.Count(); ++index) {
            SCOPED_TRACE(index);
            TabsOf(window).setCurrentIndex(index);
            LocusPage& page = PageOf(window);
            const QImage image = ImageOf(page);
            EXPECT_EQ(image, PlotImage(store[index], page.size(), 2));
            EXPECT_EQ(image.pixelColor(edgesOfThePage + 3, edgesOfThePage + 3),
                      QColor(224, 224, 208));
            int curvePixels = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    if (image.pixelColor(x, y) == QColor(128, 0, 0)) ++curvePixels;
                }
            }
            EXPECT_EQ(curvePixels, 0);
        }
        Escape(window);
    });
}

TEST_F(LocusDialogTest, PaintsNothingOnAPageWithoutASet) {
    LocusPage page(&owner, nullptr, 2);
    page.resize(80, 60);
    QImage expected(page.size(), QImage::Format_RGB32);
    expected.fill(QColor(224, 224, 208));
    EXPECT_EQ(ImageOf(page), expected);
}

TEST_F(LocusDialogTest, LabelsWithAsManyDecimalsAsAskedFor) {
    Add({0, LocusKind::xy, {{1, 10.123456789}, {200, 0.1}}});
    for (const int precision : {0, 1, 7, 32, 33, 100, std::numeric_limits<int>::max()}) {
        SCOPED_TRACE(precision);
        Run(
            [&](QWidget& window) {
                LocusPage& page = PageOf(window);
                const QImage image = ImageOf(page);
                EXPECT_EQ(image, PlotImage(store[0], page.size(), precision));
                EXPECT_NE(image, PlotImage(store[0], page.size(), 2));
                EXPECT_EQ(image == PlotImage(store[0], page.size(), 32), precision == 32);
                Escape(window);
            },
            precision);
    }
}

TEST_F(LocusDialogTest, PaintsACurveOnceForEachSize) {
    LocusSet& set = Add({0, LocusKind::xy, {{1, 2}, {3, 4}, {5, 1}}});
    Add({1, LocusKind::xy, {{1, 2}}});
    const std::vector<LocusPoint> points = set.points;
    Run([&](QWidget& window) {
        Resize(window, sizes[1]);
        const QImage first = ImageOf(PageOf(window));
        set.points.clear();  // would show if the page were painted anew
        EXPECT_EQ(ImageOf(PageOf(window)), first);
        TabsOf(window).setCurrentIndex(1);
        TabsOf(window).setCurrentIndex(0);
        EXPECT_EQ(ImageOf(PageOf(window)), first);
        Resize(window, sizes[2]);
        EXPECT_EQ(ImageOf(PageOf(window)), PlotImage(set, PageOf(window).size(), 2));
        set.points = points;
        Resize(window, sizes[1]);
        EXPECT_EQ(ImageOf(PageOf(window)), first);
        Escape(window);
    });
}

TEST_F(LocusDialogTest, KeepsThePicturesOfTheLastFourPages) {
    for (int index = 0; index < 6; ++index) Add({index, LocusKind::xy, {{1, 2}, {3, 4 + index}}});
    Run([&](QWidget& window) {
        QTabBar& tabs = TabsOf(window);
        std::vector<QImage> images;
        for (int index = 0; index < 6; ++index) {
            tabs.setCurrentIndex(index);
            images.push_back(ImageOf(PageOf(window)));
        }
        // The pages are told apart from new ones by the curves that are gone.
        for (int index = 0; index < 6; ++index) const_cast<LocusSet&>(store[index]).points.clear();
        for (const int index : {5, 4, 3, 2}) {
            tabs.setCurrentIndex(index);
            EXPECT_EQ(ImageOf(PageOf(window)), images[static_cast<std::size_t>(index)]) << index;
        }
        for (const int index : {1, 0}) {
            tabs.setCurrentIndex(index);
            EXPECT_EQ(ImageOf(PageOf(window)), PlotImage(store[index], PageOf(window).size(), 2));
        }
        Escape(window);
    });
}

TEST_F(LocusDialogTest, StretchesALongCurveUntilTheSizeStays) {
    LocusSet& set = *store.Add(0, LocusKind::xy);
    const auto count = static_cast<int>(LocusPage::quickPoints) + 1;
    for (int i = 0; i < count; ++i) set.AddPoint(i, i % 1000, i == 0);
    set.FindRanges(1'000'000'000, 1'000'000'000, 1);
    ASSERT_GT(set.points.size(), LocusPage::quickPoints);
    LocusPage page(&owner, &set, 2);
    page.resize(400, 300);
    page.show();
    EXPECT_EQ(ImageOf(page), PlotImage(set, {400, 300}, 2));
    for (const QSize& size : {QSize(450, 310), QSize(520, 330)}) {
        page.resize(size);
        const QImage stretched = ImageOf(page);
        EXPECT_EQ(stretched.size(), size);
        EXPECT_NE(stretched, PlotImage(set, size, 2));
    }
    const QImage made = PlotImage(set, {520, 330}, 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ImageOf(page) == made; }));
}

// Placement

constexpr const char* settingsBefore =
    "\r\n\r\n{SECT_MAIN}\r\n<KEY>\r\n[KEY_SYSBITS]30\r\n[OTHER]kept\r\n<LIST>\r\n";

TEST_F(LocusDialogTest, StoresItsPlaceWhenItIsClosedAndComesBackThere) {
    const Step ways[] = {[](QWidget& window) { Escape(window); },
                         [](QWidget& window) { window.close(); }};
    for (const bool hasCurves : {false, true}) {
        if (hasCurves) AddThree();
        for (const Step& leave : ways) {
            Write("settings", settingsBefore);
            const QRect place(150, 130, 611, 387);
            Run([&](QWidget& window) {
                MoveTo(window, place);
                EXPECT_EQ(Read("settings"), settingsBefore);
                leave(window);
            });
            const char* const record = "[KEY_DLGLOCUSPLACE]1/0/150/130/761/517/-1/-1/-1/-1/\r\n";
            std::string expected = settingsBefore;
            expected.insert(expected.find("<LIST>"), record);
            EXPECT_EQ(Read("settings"), expected);

            Run([&](QWidget& window) {
                EXPECT_TRUE(QTest::qWaitFor([&] { return window.geometry() == place; }));
                Escape(window);
            });
            EXPECT_EQ(Read("settings"), expected);
        }
    }
}

TEST_F(LocusDialogTest, ComesBackMaximised) {
    Write("settings",
          "{SECT_MAIN}\r\n<KEY>\r\n"
          "[KEY_DLGLOCUSPLACE]3/0/140/120/840/675/-1/-1/-1/-1/\r\n<LIST>\r\n");
    AddThree();
    Run([](QWidget& window) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return window.isMaximized(); }));
        EXPECT_GT(window.width(), 840);
        Escape(window);
    });
    EXPECT_NE(Read("settings").find("[KEY_DLGLOCUSPLACE]3/0/"), std::string::npos);
}

TEST_F(LocusDialogTest, TakesItsFirstSizeWithoutAPlaceThatCanBeRead) {
    constexpr const char* records[] = {
        "{SECT_MAIN}\r\n<KEY>\r\n<LIST>\r\n",
        "{SECT_MAIN}\r\n<KEY>\r\n[KEY_DLGLOCUSPLACE]1/0/140/120/840/675/-1/-1/-1/\r\n<LIST>\r\n",
        "{SECT_MAIN}\r\n<KEY>\r\n[KEY_WNDPLACE]1/0/140/120/840/675/-1/-1/-1/-1/\r\n<LIST>\r\n"};
    for (const char* record : records) {
        SCOPED_TRACE(record);
        Write("settings", record);
        Run([](QWidget& window) {
            EXPECT_EQ(window.size(), QSize(680, 540));
            Escape(window);
        });
    }
}

TEST_F(LocusDialogTest, NeverMakesASettingsFile) {
    ASSERT_TRUE(QFile::remove(QString::fromStdString(Path("settings"))));
    Run([](QWidget& window) { Escape(window); });
    EXPECT_FALSE(QFile::exists(QString::fromStdString(Path("settings"))));
}

// From the main window

class LocusCommand : public MainWindowTest {};

TEST_F(LocusCommand, ShowsTheCurvesOfTheLastCalculationWithTheTypedPrecision) {
    MainWindow& shown = Start();
    test::ModalPlayer player;
    const auto open = [&](const test::ModalPlayer::Step& step) {
        player.Then([&](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), "Locus");
            step(window);
            QTest::keyClick(&window, Qt::Key_Escape);
        });
        shown.RunCommand(ids::command::locus);
    };
    const auto pageOf = [](QWidget& window) {
        for (QWidget* child : window.findChildren<QWidget*>()) {
            auto* const page = dynamic_cast<LocusPage*>(child);
            if (page != nullptr && page->isVisible()) return page;
        }
        return static_cast<LocusPage*>(nullptr);
    };
    open([&](QWidget& window) { EXPECT_EQ(pageOf(window), nullptr); });

    shown.Editor().SetText("a = 1; curve = locus_polar(t, 0, 6, 400, t / 7);");
    shown.RunButton(MainButton::calculate);
    ControlOf<QLineEdit>(shown, ids::mainWindow::floatPrecisionBox).setText("50");
    ASSERT_EQ(locusStore.Count(), 1);
    const std::size_t points = locusStore[0].points.size();
    open([&](QWidget& window) {
        LocusPage* const page = pageOf(window);
        ASSERT_NE(page, nullptr);
        EXPECT_EQ(ImageOf(*page), PlotImage(locusStore[0], page->size(), 50));
        EXPECT_NE(ImageOf(*page), PlotImage(locusStore[0], page->size(), 32));
    });
    EXPECT_EQ(locusStore[0].points.size(), points);
    EXPECT_NE(Read("Setting/Orvane.set").find("[KEY_DLGLOCUSPLACE]1/0/"), std::string::npos);

    shown.Editor().SetText("a = 1;");
    shown.RunButton(MainButton::calculate);
    open([&](QWidget& window) { EXPECT_EQ(pageOf(window), nullptr); });
}

}  // namespace
}  // namespace orvane
