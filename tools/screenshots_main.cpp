// Takes pictures of the desktop program in its states, of the whole screen, so that menus, pop-ups
// and dialogs are on them; tools/screenshots gives it a screen of its own.
//
//     orvane_screenshots PROGRAM_FOLDER PICTURES_FOLDER
//
// PROGRAM_FOLDER is where the program was built, with the packed samples and the bitmaps; nothing
// is written there. Exit status 1: a picture could not be taken.

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QListView>
#include <QMenu>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <clocale>
#include <functional>
#include <iostream>

#include "app/main_window.h"
#include "storage/file_bytes.h"
#include "storage/qt_bytes.h"
#include "windows/control_ids.h"
#include "windows/help_viewer.h"
#include "windows/look.h"

namespace orvane {

namespace {

constexpr int settleMilliseconds = 250;
constexpr int longestWait = 5000;
constexpr const char* sampleName = "Measurements: mean and spread";
constexpr const char* curveName = "Rose curve";

using Action = std::function<void()>;
using WindowAction = std::function<void(QWidget& opened)>;

// The windows of this program that can be seen.
QWidgetList ShownWindows() {
    QWidgetList shown;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        const QWindow* window = widget->windowHandle();
        if (widget->isVisible() && window != nullptr && window->isExposed()) shown += widget;
    }
    return shown;
}

void CloseWindow(QWidget& window) { window.close(); }

class Camera {
public:
    explicit Camera(const QString& picturesFolder) : folder(picturesFolder) {}

    bool HasFailed() const { return hasFailed; }

    // The window manager and the screen paint in their own time.
    void Take(const char* name) {
        QTest::qWait(settleMilliseconds);
        const QPixmap picture = QGuiApplication::primaryScreen()->grabWindow(0);
        const QString path = folder.filePath(QStringLiteral("%1.png").arg(QLatin1String(name)));
        if (!picture.save(path)) Fail(name, "cannot be written");
    }

    // Runs `open`, which may hold the thread until what it opens is closed again, and takes the
    // picture as soon as a new window shows and `prepare` has run on it; `leave` must close it.
    void TakeOpened(const char* name, const Action& open, const WindowAction& prepare = {},
                    const WindowAction& leave = CloseWindow) {
        const QWidgetList before = ShownWindows();
        bool isTaken = false;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, [&] {
            for (QWidget* window : ShownWindows()) {
                if (before.contains(window)) continue;
                watch.stop();
                if (prepare) prepare(*window);
                Take(name);
                leave(*window);
                isTaken = true;
                return;
            }
        });
        watch.start(20);
        open();
        if (!QTest::qWaitFor([&] { return isTaken; }, longestWait)) Fail(name, "does not open");
        const auto isClosed = [&] { return ShownWindows().size() <= before.size(); };
        if (!QTest::qWaitFor(isClosed, longestWait)) Fail(name, "does not close");
    }

private:
    void Fail(const char* name, const char* reason) {
        std::cerr << "orvane_screenshots: " << name << " " << reason << "\n";
        hasFailed = true;
    }

    QDir folder;
    bool hasFailed = false;
};

// A control of a window, which has it for certain.
template <typename Control>
Control& ControlOf(QWidget& window, int id) {
    return *window.findChild<Control*>(QString::number(id));
}

void PressButton(QWidget& window, int id) {
    QTest::mouseClick(&ControlOf<QWidget>(window, id), Qt::LeftButton);
}

void SelectSheet(QWidget& dialog, const char* name) {
    auto& list = ControlOf<QListView>(dialog, ids::fileDialog::sheetList);
    const QModelIndexList found = list.model()->match(list.model()->index(0, 0), Qt::DisplayRole,
                                                      QLatin1String(name), 1, Qt::MatchExactly);
    if (found.isEmpty()) return;
    list.scrollTo(found.first());
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(found.first()).center());
}

class Screenshots {
public:
    Screenshots(MainWindow& shown, Camera& pictures) : window(shown), camera(pictures) {}

    void TakeAll() {
        camera.Take("first_start");
        OpenSample("sample_files", sampleName);
        window.RunButton(MainButton::calculate);
        camera.Take("report");
        TakeHeights();
        TakeMenus();
        TakeContextMenus();
        TakeTyping();
        TakeFileDialogs();
        TakeMessages();
        TakeCommandWindows();
        TakeDialogDetails();
        TakeNodes();
    }

private:
    FormulaView& View() { return window.Editor().View(); }

    void OpenSample(const char* picture, const char* name) {
        camera.TakeOpened(
            picture, [this] { window.RunCommand(ids::command::openSamples); },
            [name](QWidget& dialog) { SelectSheet(dialog, name); },
            [](QWidget& dialog) { PressButton(dialog, ids::fileDialog::openButton); });
    }

    void TakeHeights() {
        using namespace ids::command;
        window.RunCommand(blackOutput);
        camera.Take("report_on_white");
        window.RunCommand(blackOutput);
        for (const auto& [name, command] :
             {std::pair("height_2_of_8", height2), std::pair("height_6_of_8", height6)}) {
            window.RunCommand(command);
            camera.Take(name);
        }
        window.RunCommand(height4);
    }

    // Opens the popup as a user does: by a press on its label.
    void PressLabel(int label) {
        MenuStrip strip;
        strip.Place(window.fontMetrics().height());
        const EdgeRect& rect = strip.LabelRect(label);
        QTest::mousePress(&window, Qt::LeftButton, {},
                          {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2});
    }

    void TakeMenus() {
        constexpr const char* names[] = {"menu_options", "menu_view", "menu_general",
                                         "menu_functions", "menu_help"};
        for (int label = 0; label < menuLabelCount; ++label) {
            camera.TakeOpened(names[label], [this, label] { PressLabel(label); });
        }
        camera.TakeOpened(
            "menu_heights", [this] { PressLabel(0); },
            [](QWidget& popup) {
                for (QAction* action : popup.actions()) {
                    if (action->menu() == nullptr) continue;
                    static_cast<QMenu&>(popup).setActiveAction(action);
                    QTest::keyClick(&popup, Qt::Key_Right);
                }
            },
            [](QWidget& popup) {
                while (QWidget* open = QApplication::activePopupWidget()) open->close();
                popup.close();
            });
    }

    void AskForMenu(QWidget& widget) {
        const QPoint at(120, 60);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, widget.mapToGlobal(at));
        QApplication::sendEvent(&widget, &event);
    }

    void TakeContextMenus() {
        View().SelectAll();
        camera.TakeOpened("editor_menu", [this] { AskForMenu(*View().viewport()); });
        window.Result().selectAll();
        camera.TakeOpened("report_menu", [this] { AskForMenu(*window.Result().viewport()); });
        window.Result().moveCursor(QTextCursor::Start);
    }

    // The sheet gets new first lines and is put back afterwards.
    void TakeTyping() {
        const std::string sheet = window.Editor().GetText();
        window.Editor().SetText("radius = 2.5;\n\n" + sheet);
        window.Editor().SetFocus();
        QTest::keyClick(&View(), Qt::Key_Down);
        QTest::keyClicks(&View(), QStringLiteral("side = sq"));
        QTest::keyClick(&View(), Qt::Key_F1);
        camera.Take("keyword_list");
        QTest::keyClick(&View(), Qt::Key_Return);
        QTest::keyClicks(&View(), QStringLiteral("(radius) + "));
        QTest::keyClicks(&View(), QStringLiteral("sum(radius, "));
        camera.Take("parameter_hint");
        window.Editor().SetText(sheet);
    }

    void TakeFileDialogs() {
        const Action open = [this] { window.RunButton(MainButton::open); };
        camera.TakeOpened("file_open", open,
                          [](QWidget& dialog) { SelectSheet(dialog, sampleName); });
        camera.TakeOpened("file_save", [this] { window.RunButton(MainButton::saveAs); });
        camera.TakeOpened("file_message", open, [this](QWidget& dialog) {
            camera.TakeOpened("file_message_open",
                              [&dialog] { PressButton(dialog, ids::fileDialog::openButton); });
        });
        camera.TakeOpened("file_delete", open, [this](QWidget& dialog) {
            SelectSheet(dialog, curveName);
            camera.TakeOpened("file_delete_question",
                              [&dialog] { PressButton(dialog, ids::fileDialog::deleteButton); });
        });
    }

    void TakeMessages() {
        const std::string sheet = window.Editor().GetText();
        window.Editor().SetText("");
        camera.TakeOpened("empty_sheet", [this] { window.RunButton(MainButton::calculate); });
        window.Editor().SetText(sheet + "\n");
        camera.TakeOpened("close_question", [this] { window.close(); });
        window.Editor().SetText(sheet);
    }

    void TakeCommandWindows() {
        using namespace ids::command;
        constexpr std::pair<const char*, int> rows[] = {
            {"text_colors", textColours},     {"options", generalOptions},
            {"all_keywords", allKeywords},    {"about", about},
            {"software_news", softwareNews},  {"help_contents", helpContents},
            {"help_on_functions", firstTopic}};
        for (const auto& [name, command] : rows) {
            camera.TakeOpened(name, [this, id = command] { window.RunCommand(id); });
        }
        OpenSample("sample_files_curve", curveName);
        window.RunButton(MainButton::calculate);
        camera.TakeOpened("locus", [this] { window.RunCommand(locus); });
    }

    void TakeDialogDetails() {
        using namespace ids::command;
        camera.TakeOpened(
            "all_keywords_sorted", [this] { window.RunCommand(allKeywords); },
            [](QWidget& dialog) {
                auto& list = ControlOf<QTableView>(dialog, ids::keywordDialog::keywordList);
                QTest::mouseClick(list.horizontalHeader()->viewport(), Qt::LeftButton, {},
                                  QPoint(120, 5));
                list.selectRow(5);
            });
        camera.TakeOpened(
            "text_colors_chooser", [this] { window.RunCommand(textColours); },
            [this](QWidget& dialog) {
                camera.TakeOpened("text_colors_chooser_open", [&dialog] {
                    PressButton(dialog, ids::textColourDialog::firstColourButton + 4);
                });
            });
        camera.TakeOpened(
            "text_colors_restore", [this] { window.RunCommand(textColours); },
            [this](QWidget& dialog) {
                camera.TakeOpened("text_colors_question", [&dialog] {
                    PressButton(dialog, ids::textColourDialog::restoreButton);
                });
            });
        camera.TakeOpened(
            "options_list", [this] { window.RunCommand(generalOptions); },
            [](QWidget& dialog) {
                ControlOf<QComboBox>(dialog, ids::optionsDialog::fineList).showPopup();
            },
            [](QWidget& dialog) {
                ControlOf<QComboBox>(dialog, ids::optionsDialog::fineList).hidePopup();
                dialog.close();
            });
    }

    // The tree of a formula, in a window that holds it and in one that must be scrolled.
    void TakeNodes() {
        const std::string sheet = window.Editor().GetText();
        window.Editor().SetText(
            "radius = 2.5;\nlength(point(1, 2)) + series(k, 1, 1, 9, 1 / k) * (radius - "
            "sqrt(-4));");
        window.Editor().SetFocus();
        QTest::keyClick(&View(), Qt::Key_Down);
        const Action press = [this] {
            if (QTest::qWaitForWindowActive(&window)) QTest::keyClick(&View(), Qt::Key_F12);
        };
        camera.TakeOpened("nodes", press);
        camera.TakeOpened("nodes_scrolled", press, [](QWidget& dialog) {
            for (auto* bar : dialog.findChildren<QScrollBar*>()) bar->setValue(bar->maximum() / 2);
        });
        window.Editor().SetText(sheet);
    }

    MainWindow& window;
    Camera& camera;
};

// A program folder as at a first start, but with the samples as the user's own sheets too.
bool FillProgramFolder(const QDir& from, const QDir& to) {
    bool isCopied = to.mkdir(QStringLiteral("Setting")) && to.mkdir(QStringLiteral("Bitmaps"));
    constexpr std::pair<const char*, const char*> files[] = {
        {"Setting/sample.file", "Setting/sample.file"},
        {"Setting/sample.file", "Setting/user.file"},
        {"Bitmaps/Base_111up.bmp", "Bitmaps/Base_111up.bmp"},
        {"Bitmaps/Base_111dn.bmp", "Bitmaps/Base_111dn.bmp"}};
    for (const auto& [source, target] : files) {
        isCopied &=
            QFile::copy(from.filePath(QLatin1String(source)), to.filePath(QLatin1String(target)));
    }
    QFile settings(to.filePath(QStringLiteral("Setting/Orvane.set")));
    return isCopied && settings.open(QIODevice::WriteOnly);
}

int TakePictures(const QString& programFolder, const QString& picturesFolder) {
    QTemporaryDir folder;
    if (!QDir().mkpath(picturesFolder) || !FillProgramFolder(programFolder, folder.path())) {
        std::cerr << "orvane_screenshots: the samples or the bitmaps are not built\n";
        return 1;
    }
    MainWindow window(QFile::encodeName(folder.path()).toStdString());
    window.Open();
    if (!QTest::qWaitForWindowActive(&window)) return 1;
    Camera camera(picturesFolder);
    Screenshots(window, camera).TakeAll();
    return camera.HasFailed() ? 1 : 0;
}

}  // namespace

}  // namespace orvane

int main(int count, char** words) {
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication application(count, words);
    std::setlocale(LC_ALL, "C");
    QLocale::setDefault(QLocale::c());
    QApplication::setQuitOnLastWindowClosed(false);
    orvane::ApplyLook(application);
    const QStringList given = QApplication::arguments();
    if (given.size() != 3) {
        std::cerr << "orvane_screenshots PROGRAM_FOLDER PICTURES_FOLDER\n";
        return 2;
    }
    orvane::ProgramHelp().SetFolder(given[1] + "/help/html");
    return orvane::TakePictures(given[1], given[2]);
}
