#include <QAbstractScrollArea>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <algorithm>
#include <clocale>
#include <cstdio>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "app/main_window.h"
#include "bench/sheet_of_formulas.h"
#include "bench/silent_run.h"
#include "storage/qt_bytes.h"
#include "windows/look.h"

// What the user of a large sheet waits for in the desktop program: a key, a page, a calculation.
// Runs without a screen; `-platform xcb` measures with one. Beside each figure stands that of the
// toolkit's own text control, which holds the same text at the same size.

namespace orvane::bench {
namespace {

constexpr int sheetLines = 100'000;
constexpr QSize windowSize(1280, 1024);
constexpr int pageSteps = 300;
constexpr int calculations = 5;
constexpr int longestWait = 100;  // ms
constexpr int longestActivation = 5000;

// Milliseconds from the step to its paint: on the clock, and of this program's work alone.
struct StepTimes {
    std::vector<double> waited, worked;
    int unpainted = 0;
};

class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }
    bool painted = false;

private:
    bool eventFilter(QObject*, QEvent* event) override {
        painted |= event->type() == QEvent::Paint;
        return false;
    }
};

double ProcessorMilliseconds() {
    return static_cast<double>(std::clock()) * 1000.0 / CLOCKS_PER_SEC;
}

template <class Step>
void MeasureToPaint(StepTimes& times, PaintWatch& watch, const Step& step) {
    QApplication::processEvents();
    watch.painted = false;
    const double workedBefore = ProcessorMilliseconds();
    QElapsedTimer clock;
    clock.start();
    step();
    do {
        QApplication::processEvents();
    } while (!watch.painted && clock.elapsed() < longestWait);
    times.waited.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    times.worked.push_back(ProcessorMilliseconds() - workedBefore);
    if (!watch.painted) ++times.unpainted;
}

double PartOf(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    const auto last = static_cast<double>(values.size() - 1);
    return values[static_cast<std::size_t>(part * last + 0.5)];
}

void PrintColumns(const StepTimes& times) {
    std::printf("  %7.3f %7.3f %7.3f %7.3f", PartOf(times.waited, 0.5), PartOf(times.waited, 0.99),
                PartOf(times.waited, 1.0), PartOf(times.worked, 0.99));
    if (times.unpainted > 0) std::printf(" (%d without a paint)", times.unpainted);
}

void PrintRow(const std::string& name, const StepTimes& ours, const StepTimes& toolkits) {
    std::printf("%-26s", name.c_str());
    PrintColumns(ours);
    PrintColumns(toolkits);
    std::printf("\n");
    std::fflush(stdout);
}

void PrintTitle(const char* title, const char* aim) {
    std::printf("\n%s, in ms; aimed at: %s\n%26s  %-33s%s\n%26s", title, aim, "", "this program",
                "plain text control", "");
    for (int side = 0; side < 2; ++side) {
        std::printf("  %7s %7s %7s %7s", "median", "99 %", "most", "99 %cpu");
    }
    std::printf("\n");
}

// Keys.

struct PressedKey {
    int key;
    QString text;
};

std::vector<PressedKey> KeysOf(std::string_view text) {
    std::vector<PressedKey> keys;
    for (const char ch : text) {
        const QString typed = QStringFrom({&ch, 1});
        keys.push_back(ch == '\n' ? PressedKey{Qt::Key_Return, QStringLiteral("\r")}
                                  : PressedKey{Qt::Key_unknown, typed});
    }
    return keys;
}

struct KeyRow {
    const char* name;
    std::vector<PressedKey> keys;  // pressed over and over
    int count;
};

// `page` is the key for the direction in which there is text.
std::vector<KeyRow> KeyRows(int page) {
    return {{"typed", KeysOf("sum = sin(2.5) + root(total, 3) * 4;\n"), 1110},
            {"Enter", KeysOf("\n"), 300},
            {"Backspace", {{Qt::Key_Backspace, QStringLiteral("\b")}}, 600},
            {"arrows",
             {{Qt::Key_Right, {}}, {Qt::Key_Down, {}}, {Qt::Key_Left, {}}, {Qt::Key_Up, {}}},
             600},
            {"page keys", {{page, {}}}, pageSteps}};
}

struct Place {
    const char* name;
    double part;  // of the way down
    int page;
};

constexpr Place places[] = {{"front", 0.0, Qt::Key_PageDown},
                            {"middle", 0.5, Qt::Key_PageDown},
                            {"end", 1.0, Qt::Key_PageUp}};

// Makes the window the active one, as only that paints its caret, and clicks in one of the first
// lines of what shows there.
void PutCaret(QAbstractScrollArea& area, double part) {
    area.activateWindow();
    area.setFocus();
    QElapsedTimer clock;
    clock.start();
    while (!area.hasFocus() && clock.elapsed() < longestActivation) QApplication::processEvents();
    QScrollBar& bar = *area.verticalScrollBar();
    bar.setValue(static_cast<int>(part * bar.maximum()));
    QApplication::processEvents();
    const QPointF at(40.0, 40.0);
    for (const auto& [type, held] : {std::pair(QEvent::MouseButtonPress, Qt::LeftButton),
                                     std::pair(QEvent::MouseButtonRelease, Qt::NoButton)}) {
        QMouseEvent event(type, at, area.viewport()->mapToGlobal(at), Qt::LeftButton, held,
                          Qt::NoModifier);
        QApplication::sendEvent(area.viewport(), &event);
    }
}

StepTimes PressKeys(QAbstractScrollArea& area, const KeyRow& row) {
    StepTimes times;
    PaintWatch watch(*area.viewport());
    for (int step = 0; step < row.count; ++step) {
        const PressedKey& pressed = row.keys[static_cast<std::size_t>(step) % row.keys.size()];
        QKeyEvent event(QEvent::KeyPress, pressed.key, Qt::NoModifier, pressed.text);
        MeasureToPaint(times, watch, [&] { QApplication::sendEvent(&area, &event); });
    }
    return times;
}

void AddTo(StepTimes& all, const StepTimes& some) {
    all.waited.insert(all.waited.end(), some.waited.begin(), some.waited.end());
    all.worked.insert(all.worked.end(), some.worked.begin(), some.worked.end());
    all.unpainted += some.unpainted;
}

// All the keys of one place follow each other, so Backspace takes away what was typed.
std::vector<StepTimes> PressAllKeys(QAbstractScrollArea& area, const Place& place) {
    std::vector<StepTimes> times;
    PutCaret(area, place.part);
    for (const KeyRow& row : KeyRows(place.page)) times.push_back(PressKeys(area, row));
    return times;
}

void MeasureKeys(QAbstractScrollArea& ours, QAbstractScrollArea& toolkits) {
    PrintTitle("From a key to the finished paint", "99 % under 4");
    StepTimes allOurs, allToolkits;
    for (const Place& place : places) {
        const std::vector<KeyRow> rows = KeyRows(place.page);
        const std::vector<StepTimes> our = PressAllKeys(ours, place);
        const std::vector<StepTimes> toolkit = PressAllKeys(toolkits, place);
        for (std::size_t row = 0; row < rows.size(); ++row) {
            PrintRow(std::string(rows[row].name) + ", " + place.name, our[row], toolkit[row]);
            AddTo(allOurs, our[row]);
            AddTo(allToolkits, toolkit[row]);
        }
    }
    PrintRow("all keys", allOurs, allToolkits);
}

// Pages and calculations.

// The toolkit's own text control, set up for a fair comparison.
void PrepareEdit(QPlainTextEdit& edit, const QSize& size, const std::string& text) {
    edit.setFont(FixedFont());
    edit.setLineWrapMode(QPlainTextEdit::NoWrap);
    edit.resize(size);
    edit.setPlainText(QStringFrom(text));
    edit.show();
}

StepTimes ScrollPages(QAbstractScrollArea& area) {
    StepTimes times;
    PaintWatch watch(*area.viewport());
    QScrollBar& bar = *area.verticalScrollBar();
    bar.setValue(0);
    for (int step = 0; step < pageSteps; ++step) {
        MeasureToPaint(times, watch,
                       [&] { bar.triggerAction(QAbstractSlider::SliderPageStepAdd); });
    }
    return times;
}

void PrintRun(const char* name, const std::vector<double>& times) {
    std::printf("%-44s %8.0f %8.0f\n", name, PartOf(times, 0.5), PartOf(times, 0.0));
}

void MeasureCalculations(MainWindow& window, const std::string& sheet) {
    StepTimes shown;
    std::vector<double> silent, set;
    PaintWatch watch(*window.Result().viewport());
    QPlainTextEdit plain;
    plain.setReadOnly(true);
    PrepareEdit(plain, window.Result().size(), {});
    for (int run = 0; run < calculations; ++run) {
        MeasureToPaint(shown, watch, [&] { window.RunButton(MainButton::calculate); });
        QElapsedTimer clock;
        clock.start();
        const std::string report = RunSilently(sheet, calcParameters);
        silent.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        clock.start();
        plain.setPlainText(QStringFrom(report));
        plain.viewport()->repaint();
        set.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::printf("\nOne calculation, in ms; aimed at: under 2000\n%44s %8s %8s\n", "", "median",
                "least");
    PrintRun("Calculate, until the report is painted", shown.waited);
    PrintRun("the same in processor time", shown.worked);
    PrintRun("the calculation and its report's text alone", silent);
    PrintRun("the report put into a plain text control", set);
}

void RunAll(const std::string& programFolder) {
    const std::string sheet = SheetOfFormulas(sheetLines);
    MainWindow window(programFolder);
    window.resize(windowSize);
    window.show();
    window.activateWindow();
    FormulaView& view = window.Editor().View();

    StepTimes opened;
    {
        PaintWatch watch(*view.viewport());
        MeasureToPaint(opened, watch, [&] { window.Editor().SetText(sheet); });
    }
    QPlainTextEdit edit;
    PrepareEdit(edit, view.size(), sheet);
    std::printf("%d lines, %dx%d in the editor, platform %s; opened in %.0f ms\n", sheetLines,
                view.viewport()->width(), view.viewport()->height(),
                qPrintable(QApplication::platformName()), opened.waited.front());

    MeasureKeys(view, edit);
    window.Editor().SetText(sheet);
    edit.setPlainText(QStringFrom(sheet));
    MeasureCalculations(window, sheet);
    PrintTitle("Scrolling by a page", "under 8");
    const StepTimes plainPages = ScrollPages(edit);
    PrintRow("sheet", ScrollPages(view), plainPages);
    PrintRow("report", ScrollPages(window.Result()), plainPages);
}

}  // namespace
}  // namespace orvane::bench

int main(int count, char** words) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Without a screen no window can be raised, and the toolkit complains of each that should be.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication application(count, words);
    std::setlocale(LC_ALL, "C");
    QLocale::setDefault(QLocale::c());
    orvane::ApplyLook(application);
    const QTemporaryDir folder;
    QDir(folder.path()).mkdir(QStringLiteral("Setting"));
    orvane::bench::RunAll(folder.path().toStdString());
    return 0;
}
