#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QShortcut>
#include <QWidget>
#include <optional>
#include <string>

#include "app/calculation.h"
#include "app/current_sheet.h"
#include "app/main_layout.h"
#include "app/main_menus.h"
#include "app/main_painting.h"
#include "app/option_column.h"
#include "app/result_pane.h"
#include "app/sheet_commands.h"
#include "editor/formula_editor.h"
#include "storage/settings_file.h"
#include "windows/file_dialogs.h"
#include "windows/message_box.h"

namespace orvane {

// The whole program: the formula editor on top, the report below, the options at the right, and a
// menu strip and five buttons that it paints and tracks itself.
class MainWindow : public QWidget,
                   private MessageDisplay,
                   private ProgressDisplay,
                   private SheetEditor,
                   private TitleDisplay {
    Q_OBJECT

public:
    // `programFolder` holds `Setting` and `Bitmaps`. Reads the settings, reopens the last sheet and
    // is ready to be shown by Open.
    explicit MainWindow(std::string programFolder);
    ~MainWindow() override;

    // Shows the window where it stood, or maximised at a first start.
    void Open();

    // What a press on a button or the choice of a menu item does.
    void RunButton(MainButton button);
    void RunCommand(int command);

    FormulaEditor& Editor() { return editor; }
    ResultPane& Result() { return resultPane; }
    MainMenus& Menus();
    const MenuStrip& Strip() const { return strip; }
    // The settings file's path.
    std::string SettingsPath() const { return folder + "/Setting/Orvane.set"; }

signals:
    // The user closed the window, and with it the program.
    void Closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    // What the calculation and the commands on the sheet ask of the window.
    void ShowMessage(std::string_view message, std::string_view caption) override;
    void Show() override;
    void Step() override;
    void Hide() override;
    std::string GetText() const override;
    void SetText(std::string_view text) override;
    void SetTitle(std::string_view title) override;

    void LoadSettings();
    void SaveSettings();
    void LayOut();
    void HoverLabel(std::optional<int> label);
    void FinishStart();
    void OpenPopup(int label);
    void Calculate();
    void InspectSentence();
    void ToggleBlackOutput();
    void ToggleAlwaysOnTop();
    void ShowOnTop();
    void SetHeight(int command);

    std::string folder;
    CurrentSheet sheet;
    CalculationTexts texts;
    ButtonImages images;
    std::optional<MainMenus> menus;  // made when the first one is opened
    MenuStrip strip;
    ButtonTracker buttons;
    MainLayout layout;

    QLabel calculationLabel;
    QLabel resultLabel;
    FormulaEditor editor;
    ResultPane resultPane;
    QProgressBar progressBar;
    QElapsedTimer sinceStep;
    OptionColumn options;
    MessageBox messageBox;
    FileDialogs fileDialogs;
    SheetCommands commands;
    QShortcut inspectKey;
    bool startsMaximised = false;
    bool isPainted = false;
    // Where the window stood when it was closed: a hidden one no longer tells.
    std::optional<WindowPlacement> lastPlacement;
};

}  // namespace orvane
