#include "locus/curve_files.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSvgRenderer>
#include <QTimer>
#include <string>

#include "locus/plot_pictures.h"
#include "tests/screens/locus_dialog_fixture.h"
#include "tests/support/sheet_run.h"
#include "tests/support/tool_run.h"
#include "windows/control_ids.h"

// The menu of a page: what it copies and saves.

namespace orvane {
namespace {

namespace id = ids::locusWindow;

// `name` in quotation marks, with `rest` behind it.
std::string Quoted(const std::string& name, const char* rest) {
    std::string text = "\"";
    return text.append(name).append("\"").append(rest);
}

class CurveFiles : public LocusDialogFixture {
protected:
    CurveFiles() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    ~CurveFiles() override { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false); }

    // Opens the page's menu, hands it on and presses Enter on the entry with this number, if any.
    static std::vector<std::string> UseMenu(
        LocusPage& page, int entry, QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse) {
        std::vector<std::string> texts;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (menu == nullptr || !menu->isVisible()) return;
            poll.stop();
            QAction* chosen = nullptr;
            for (QAction* const action : menu->actions()) {
                EXPECT_TRUE(action->isEnabled());
                texts.push_back(action->text().toStdString());
                if (action->objectName() == QString::number(entry)) chosen = action;
            }
            if (chosen == nullptr) {
                menu->close();
                return;
            }
            menu->setActiveAction(chosen);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        poll.start(5);
        const QPoint at(60, 60);
        QContextMenuEvent event(reason, at, page.mapToGlobal(at));
        QApplication::sendEvent(&page, &event);
        return texts;
    }

    // In the file dialog: the name is typed, the row of the file types chosen, Save pressed.
    Step TypeName(const std::string& name, int filter = 0, const Step& look = {}) {
        return [=, this](QWidget& window) {
            auto* const dialog = qobject_cast<QFileDialog*>(&window);
            ASSERT_NE(dialog, nullptr);
            if (look) look(window);
            dialog->setDirectory(folder.path());
            dialog->selectNameFilter(dialog->nameFilters().at(filter));
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(name));
            test::Press(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save));
        };
    }
    static Step Answer(QMessageBox::StandardButton button, const std::string& text) {
        return [=](QWidget& window) {
            auto* const box = qobject_cast<QMessageBox*>(&window);
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->windowTitle(), "Message");
            EXPECT_EQ(box->text().toStdString(), text);
            test::Press(box->button(button));
        };
    }
    // Chooses the entry and plays the user of the windows that come up.
    void Use(QWidget& window, int entry, const std::vector<Step>& steps) {
        for (const Step& step : steps) player.Then(step);
        UseMenu(PageOf(window), entry);
        EXPECT_TRUE(player.IsDone());
        EXPECT_TRUE(window.isVisible());
    }
    // The same from opening to closing the window, on the first page.
    void Choose(int entry, const std::vector<Step>& steps, int labelPrecision = 2) {
        Run(
            [&](QWidget& window) {
                pageSize = PageOf(window).size();
                Use(window, entry, steps);
                Escape(window);
            },
            labelPrecision);
    }

    QStringList Files() const {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QSize pageSize;
};

TEST_F(CurveFiles, OffersThreeThingsByMouseAndByKeyboard) {
    AddThree();
    Run([&](QWidget& window) {
        for (const auto reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
            EXPECT_EQ(
                UseMenu(PageOf(window), 0, reason),
                (std::vector<std::string>{"Copy picture", "Save picture...", "Save points..."}));
        }
        EXPECT_TRUE(PageOf(window).focusPolicy() & Qt::TabFocus);
        Escape(window);
    });
}

TEST_F(CurveFiles, CopiesThePageAsItIsPainted) {
    AddThree();
    Run([&](QWidget& window) {
        for (const int index : {1, 0}) {
            TabsOf(window).setCurrentIndex(index);
            LocusPage& page = PageOf(window);
            QGuiApplication::clipboard()->clear();
            UseMenu(page, id::copyPicture);
            const QImage painted = page.grab().toImage().convertToFormat(QImage::Format_RGB32);
            const QImage copied =
                QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
            ASSERT_EQ(copied.size(), page.size() * page.devicePixelRatioF());
            EXPECT_EQ(copied, painted);
        }
        Escape(window);
    });
}

// Saving pictures

struct NameRow {
    const char* typed;
    int filter;
    const char* saved;
    const char* start;  // of the file's bytes
};
constexpr NameRow nameRows[] = {
    {"by_filter", 0, "by_filter.svg", "<?xml"},
    {"by_filter", 1, "by_filter.png", "\x89PNG\r\n"},
    {"by_filter", 2, "by_filter.pdf", "%PDF-"},
    {"by_ending.pdf", 0, "by_ending.pdf", "%PDF-"},
    {"by_ending.PNG", 0, "by_ending.PNG", "\x89PNG\r\n"},
    {"by_ending.Svg", 2, "by_ending.Svg", "<?xml"},
    {"curve.2", 1, "curve.2.png", "\x89PNG\r\n"},  // a point alone is no ending
    {"curve.csv", 2, "curve.csv.pdf", "%PDF-"},
};

TEST_F(CurveFiles, SavesPicturesOfTheKindThatTheNameOrTheFilterTells) {
    AddThree();
    for (const NameRow& row : nameRows) {
        SCOPED_TRACE(row.saved);
        const auto look = [](QWidget& window) {
            auto& dialog = static_cast<QFileDialog&>(window);
            EXPECT_EQ(dialog.windowTitle(), "Save picture");
            EXPECT_EQ(dialog.nameFilters(),
                      (QStringList{"SVG picture (*.svg)", "PNG picture (*.png)",
                                   "PDF document (*.pdf)"}));
            EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "1_xy");
        };
        Choose(id::savePicture, {TypeName(row.typed, row.filter, look)});
        EXPECT_EQ(Files(), (QStringList{row.saved, "settings"}));
        const std::string bytes = Read(row.saved);
        EXPECT_EQ(bytes.substr(0, std::string(row.start).size()), row.start);
        ASSERT_TRUE(QFile::remove(QString::fromStdString(Path(row.saved))));
    }
}

TEST_F(CurveFiles, SavesPicturesThatOtherProgramsCanRead) {
    AddThree();
    constexpr int precision = 40;
    for (const char* const name : {"a.svg", "a.png", "a.pdf"}) {
        Choose(id::savePicture, {TypeName(name)}, precision);
    }
    const QImage image(QString::fromStdString(Path("a.png")));
    EXPECT_EQ(image.convertToFormat(QImage::Format_RGB32),
              PlotImage(store[0], pageSize, precision).convertToFormat(QImage::Format_RGB32));
    QSvgRenderer drawing(QString::fromStdString(Path("a.svg")));
    EXPECT_TRUE(drawing.isValid());
    EXPECT_EQ(drawing.viewBox(), QRect(QPoint(), pageSize));
    const std::string document = Read("a.pdf");
    EXPECT_NE(document.find("%%EOF"), std::string::npos);
    EXPECT_NE(document.find("/MediaBox"), std::string::npos);
}

TEST_F(CurveFiles, SavesNothingWhenTheUserGivesUp) {
    AddThree();
    for (const int entry : {id::savePicture, id::savePoints}) {
        Choose(entry, {&Escape});
        EXPECT_EQ(Files(), QStringList{"settings"});
    }
}

// Files that are there

TEST_F(CurveFiles, ReplacesAFileOnlyWhenItMay) {
    AddThree();
    const std::pair<int, const char*> rows[] = {{id::savePicture, "old.svg"},
                                                {id::savePoints, "old.csv"}};
    for (const auto& [entry, name] : rows) {
        SCOPED_TRACE(name);
        const std::string question = Quoted(name, " exists already. Replace it?");
        Write(name, "old");
        // The question is about the name with its ending, and after No there is a new one.
        Choose(entry, {TypeName("old"), Answer(QMessageBox::No, question), &Escape});
        EXPECT_EQ(Read(name), "old");

        Choose(entry, {TypeName("old"), Answer(QMessageBox::Yes, question)});
        EXPECT_NE(Read(name), "old");
        EXPECT_GT(Read(name).size(), 20U);
    }
}

TEST_F(CurveFiles, TellsWhyAFileIsNotSavedAndLeavesWhatIsThere) {
    AddThree();
    const std::pair<int, const char*> rows[] = {{id::savePicture, "missing/a.svg"},
                                                {id::savePoints, "missing/a.csv"}};
    for (const auto& [entry, name] : rows) {
        SCOPED_TRACE(name);
        const std::string start = Quoted(name + 8, " can't be saved: ");
        const auto read = [&](QWidget& window) {
            auto* const box = qobject_cast<QMessageBox*>(&window);
            ASSERT_NE(box, nullptr);
            const std::string text = box->text().toStdString();
            EXPECT_EQ(text.substr(0, start.size()), start);
            EXPECT_GT(text.size(), start.size());
            test::Press(box->button(QMessageBox::Ok));
        };
        Choose(entry, {TypeName(Path(name)), read});
        EXPECT_EQ(Files(), QStringList{"settings"});
    }
    EXPECT_EQ(store[0].points.size(), 3U);
}

// Saving points

TEST_F(CurveFiles, NamesPointsAsTheCommandLineDoes) {
    Add({4, LocusKind::parametric, {{1, 2}, {0.1, -1e300}}});
    const auto look = [](QWidget& window) {
        auto& dialog = static_cast<QFileDialog&>(window);
        EXPECT_EQ(dialog.windowTitle(), "Save points");
        EXPECT_EQ(dialog.nameFilters(), QStringList{"CSV table (*.csv)"});
        EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "5_parametric");
    };
    Choose(id::savePoints, {TypeName("points", 0, look)});
    EXPECT_EQ(Read("points.csv"), "x,y,pen_up\n1,2,1\n0.1,-1e+300,0\n");
    Choose(id::savePoints, {TypeName("points.v2.CSV")});
    EXPECT_EQ(Read("points.v2.CSV"), Read("points.csv"));
}

TEST_F(CurveFiles, SavesTheSamePointsAsTheCommandLine) {
    const std::string sheet =
        "rose = locus_polar(t, 0, 2 * pi, 2000, 5 * cos(4 * t));"
        "gap = locus_xy(x, -3, 3, 5000, 1 / x, 4);";
    const test::ToolResult told = test::RunTool({"curves", "--csv", Path("told"), "-"}, sheet);
    ASSERT_EQ(told.status, 0) << told.error;
    locusStore = LocusStore();  // for the screen that the tool takes
    test::Run(sheet);
    ASSERT_EQ(locusStore.Count(), 2);
    std::swap(store, locusStore);
    Run([&](QWidget& window) {
        for (const int index : {0, 1}) {
            TabsOf(window).setCurrentIndex(index);
            Use(window, id::savePoints, {TypeName("saved" + std::to_string(index))});
        }
        Escape(window);
    });
    EXPECT_GT(Read("saved0.csv").size(), 10'000U);
    EXPECT_TRUE(Read("saved0.csv") == Read("told/1_polar.csv"));
    EXPECT_TRUE(Read("saved1.csv") == Read("told/2_xy.csv"));
}

}  // namespace
}  // namespace orvane
