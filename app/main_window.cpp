#include "app/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include "app/auxiliary_windows.h"
#include "app/widget_place.h"
#include "core/calc_parameters.h"
#include "locus/locus_store.h"
#include "storage/option_settings.h"
#include "storage/qt_bytes.h"
#include "storage/settings_file.h"
#include "windows/control_ids.h"
#include "windows/help_topics.h"
#include "windows/help_viewer.h"
#include "windows/look.h"
#include "windows/window_placement.h"

namespace orvane {

namespace {

constexpr QSize firstSize(800, 600);
constexpr int stripBottom = 20;  // what stands above is not moved by a new size
constexpr int menuHeightBesideText = 6;

}  // namespace

MainWindow::MainWindow(std::string programFolder)
    : folder(std::move(programFolder)),
      images(LoadButtonImages(folder + "/Bitmaps")),
      calculationLabel(QStringLiteral("Calculation"), this),
      resultLabel(QStringLiteral("Result output"), this),
      editor(this),
      resultPane(this),
      progressBar(this),
      options(this),
      messageBox(this),
      fileDialogs(this),
      commands(sheet, {*this, *this, fileDialogs, messageBox}),
      inspectKey(Qt::Key_F12, this) {
    NameControl(calculationLabel, ids::mainWindow::calculationLabel);
    NameControl(resultLabel, ids::mainWindow::resultLabel);
    NameControl(resultPane, ids::mainWindow::resultPane);
    NameControl(progressBar, ids::mainWindow::progressBar);
    SetTitle(programTitle);
    setMouseTracking(true);
    progressBar.setTextVisible(false);
    progressBar.hide();
    strip.Place(fontMetrics().height() + menuHeightBesideText);
    connect(&editor, &FormulaEditor::HelpWanted, this,
            [this](const QString& topic) { ShowHelpTopic(this, topic); });

    inspectKey.setAutoRepeat(false);
    connect(&inspectKey, &QShortcut::activated, this, &MainWindow::InspectSentence);

    for (QWidget* control : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        control->installEventFilter(this);
    }

    PrepareArchives(sheet, folder);
    resize(firstSize);
    LoadSettings();
    LayOut();
    editor.setFocus();
}

MainWindow::~MainWindow() { SaveSettings(); }

void MainWindow::Open() {
    if (startsMaximised) {
        showMaximized();
    } else {
        show();
    }
    ShowOnTop();
}

// Without a settings file nothing is read: the options stay as they are, which is all zero.
void MainWindow::LoadSettings() {
    calcParameters = CalcParameters();
    calcParameters.floatPrecision = 0;
    calcParameters.breakText = calcParameters.showSign = false;
    calcParameters.systemBitsIndex = 0;
    SettingsFile settings(SettingsPath());
    if (!settings.OpenAndPrepare()) {
        options.Show(calcParameters);
        return;
    }
    TextColours colours = editor.Colours();
    LoadColours(settings, colours);
    editor.SetColours(colours);
    std::int32_t archiveKind = noArchive;
    std::string sheetName;
    LoadOptions(settings, calcParameters, archiveKind, sheetName);
    resultPane.SetBlack(calcParameters.blackOutput);
    options.Show(calcParameters);
    ShowOnTop();
    commands.Reopen(archiveKind, sheetName);
    WindowPlacement placement;
    const bool isPlaced = settings.GetPlacement(mainSection, mainWindowPlacementKey, placement);
    startsMaximised = !isPlaced || ApplyPlacement(*this, placement) == ShownState::maximised;
}

void MainWindow::SaveSettings() {
    SettingsFile settings(SettingsPath());
    if (!settings.Open()) return;
    SaveColours(settings, editor.Colours());
    options.Read(calcParameters);
    SaveOptions(settings, calcParameters, sheet.archiveKind, sheet.sheetName);
    settings.SetPlacement(mainSection, mainWindowPlacementKey,
                          lastPlacement ? *lastPlacement : PlacementOf(*this));
}

void MainWindow::LayOut() {
    layout = LayOutMainWindow(width(), height(), calcParameters.calcHeightCommand);
    PlaceAt(calculationLabel, layout.calculationLabel);
    PlaceAt(editor, layout.editor);
    PlaceAt(resultLabel, layout.resultLabel);
    PlaceAt(resultPane, layout.resultPane);
    PlaceAt(progressBar, layout.progressBar);
    options.Place(layout);
    update(0, stripBottom, width(), height() - stripBottom);
}

void MainWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    PaintGrooves(painter, layout);
    PaintMenuStrip(painter, strip);
    PaintButtons(painter, layout, images, buttons.Pressed(), event->rect());
    if (isPainted) return;
    isPainted = true;
    QMetaObject::invokeMethod(this, &MainWindow::FinishStart, Qt::QueuedConnection);
}

// What a start can do without until there is something to look at.
void MainWindow::FinishStart() { QApplication::setWindowIcon(ProgramIcon()); }

void MainWindow::resizeEvent(QResizeEvent*) { LayOut(); }

// No key moves between the controls: Tab belongs to the editor.
bool MainWindow::focusNextPrevChild(bool) { return false; }

void MainWindow::HoverLabel(std::optional<int> label) {
    const MenuStrip::Change change = strip.Hover(label);
    if (change.IsNone()) return;
    for (const std::optional<int> changed : {change.oldLabel, change.newLabel}) {
        if (changed) update(QRectFrom(strip.LabelRect(*changed).GrownBy(1)));
    }
}

void MainWindow::mouseMoveEvent(QMouseEvent* event) {
    HoverLabel(strip.LabelAt(event->pos().x(), event->pos().y()));
}

// A popup takes the mouse, and its label stays hovered as long as it is open.
void MainWindow::leaveEvent(QEvent*) {
    if (QApplication::activePopupWidget() == nullptr) HoverLabel(std::nullopt);
}

// A quick mouse goes from a label straight to a control, which the window is not told as leaving.
bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Enter && QApplication::activePopupWidget() == nullptr) {
        HoverLabel(std::nullopt);
    }
    return QWidget::eventFilter(watched, event);
}

void MainWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const QPoint at = event->pos();
    if (const std::optional<int> label = strip.LabelAt(at.x(), at.y())) {
        OpenPopup(*label);
    } else if (const auto button = buttons.Press(layout.buttons, at.x(), at.y())) {
        update(QRectFrom(layout.buttons[static_cast<int>(*button)].GrownBy(2)));
    }
}

void MainWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !buttons.Pressed()) return;
    update(QRectFrom(layout.buttons[static_cast<int>(*buttons.Pressed())].GrownBy(2)));
    const auto released = buttons.Release(layout.buttons, event->pos().x(), event->pos().y());
    if (released) RunButton(*released);
}

MainMenus& MainWindow::Menus() {
    if (!menus) menus.emplace();
    return *menus;
}

void MainWindow::OpenPopup(int label) {
    HoverLabel(label);
    Menus().ShowMarks(calcParameters);
    const EdgeRect& rect = strip.LabelRect(label);
    const int command = Menus().Choose(label, mapToGlobal(QPoint(rect.left, rect.bottom)));
    HoverLabel(std::nullopt);
    if (command != 0) RunCommand(command);
}

void MainWindow::RunButton(MainButton button) {
    switch (button) {
        case MainButton::newFormula:
            return commands.New();
        case MainButton::save:
            commands.Save();
            return;
        case MainButton::saveAs:
            commands.SaveAs();
            return;
        case MainButton::open:
            return commands.Open();
        case MainButton::calculate:
            return Calculate();
    }
}

void MainWindow::RunCommand(int command) {
    using namespace ids::command;
    if (command >= firstTopic && command <= lastTopic) {
        const auto topic = TopicForCommand(command);
        if (topic) ShowHelpTopic(this, QStringFrom(*topic));
        return;
    }
    switch (command) {
        case helpContents:
            return ShowHelpTopic(this, QStringFrom(topics::contents));
        case openSamples:
            return commands.OpenSamples();
        case blackOutput:
            return ToggleBlackOutput();
        case alwaysOnTop:
            return ToggleAlwaysOnTop();
        case textColours:
            return ShowTextColours(*this, editor);
        case generalOptions:
            return ShowGeneralOptions(*this, calcParameters);
        case locus:
            return ShowLocus(*this, SettingsPath(), options.Precision());
        case allKeywords:
            return ShowAllKeywords(*this);
        case softwareNews:
            return ShowSoftwareNews(*this);
        case about:
            return ShowAbout(*this);
        default:
            if (IsHeightCommand(command)) SetHeight(command);
            return;
    }
}

void MainWindow::SetHeight(int command) {
    calcParameters.calcHeightCommand = command;
    LayOut();
}

void MainWindow::ToggleBlackOutput() {
    calcParameters.blackOutput = !calcParameters.blackOutput;
    resultPane.SetBlack(calcParameters.blackOutput);
    ShowResult(texts, calcParameters, resultPane);
}

void MainWindow::ToggleAlwaysOnTop() {
    calcParameters.alwaysOnTop = !calcParameters.alwaysOnTop;
    ShowOnTop();
}

// The shown window changes in place: making it anew would let it blink.
void MainWindow::ShowOnTop() {
    const bool isOnTop = calcParameters.alwaysOnTop;
    Qt::WindowFlags flags = windowFlags();
    flags.setFlag(Qt::WindowStaysOnTopHint, isOnTop);
    overrideWindowFlags(flags);
    if (windowHandle() != nullptr) windowHandle()->setFlag(Qt::WindowStaysOnTopHint, isOnTop);
}

void MainWindow::Calculate() {
    options.Read(calcParameters);
    const QScreen* screen = this->screen();
    const QSizeF area = QSizeF(screen->availableSize()) * screen->devicePixelRatio();
    locusStore.screenWidth = qRound(area.width());
    locusStore.screenHeight = qRound(area.height());
    RunCalculation(editor.GetText(), calcParameters, {*this, *this, resultPane}, texts);
}

// The options are those that the window shows, but nothing is kept of them. A key that was pressed
// while the run went on arrives when its window is already open.
void MainWindow::InspectSentence() {
    if (QApplication::activeModalWidget() != nullptr) return;
    CalcParameters parameters = calcParameters;
    options.Read(parameters);
    ShowNodes(*this, SettingsPath(), editor, parameters, *this);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(commands.CloseRequest());
    if (!event->isAccepted()) return;
    lastPlacement = PlacementOf(*this);
    emit Closed();
}

void MainWindow::ShowMessage(std::string_view message, std::string_view) {
    messageBox.ShowMessage(message);
}

void MainWindow::Show() {
    progressBar.setValue(progressBar.minimum());
    progressBar.show();
    progressBar.repaint();
    sinceStep.start();
}

// The run holds the interface thread, so the bar paints itself at once. Steps come far faster than
// a screen shows them, and painting each one would take most of the run's time.
void MainWindow::Step() {
    constexpr qint64 shortest = 16;  // milliseconds, a frame
    constexpr int step = 10;
    if (!sinceStep.hasExpired(shortest)) return;
    const int next = progressBar.value() + step;
    progressBar.setValue(next > progressBar.maximum() ? progressBar.minimum() : next);
    progressBar.repaint();
    sinceStep.start();
}

void MainWindow::Hide() { progressBar.hide(); }

std::string MainWindow::GetText() const { return editor.GetText(); }

void MainWindow::SetText(std::string_view text) { editor.SetText(text); }

void MainWindow::SetTitle(std::string_view title) { setWindowTitle(QStringFrom(title)); }

}  // namespace orvane
