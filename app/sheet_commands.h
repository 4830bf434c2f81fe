#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/current_sheet.h"
#include "storage/questions.h"
#include "storage/sheet_dialogs.h"

// What the commands on the open sheet do: which question is asked, what becomes of the editor's
// text, and when the archive is touched. File failures are never reported. Nothing of the sheet
// changes unless its dialog was accepted or, for Save, the archive could be read.

namespace orvane {

// The text of the formula editor. What comes out need not be what was put in: the editor makes all
// line ends alike.
class SheetEditor {
public:
    virtual ~SheetEditor() = default;
    virtual std::string GetText() const = 0;
    virtual void SetText(std::string_view text) = 0;
};

class TitleDisplay {
public:
    virtual ~TitleDisplay() = default;
    virtual void SetTitle(std::string_view title) = 0;
};

// What the commands work with.
struct SheetSurroundings {
    SheetEditor& editor;
    TitleDisplay& title;
    SheetDialogs& dialogs;
    Questions& questions;
};

class SheetCommands {
public:
    SheetCommands(CurrentSheet& openSheet, const SheetSurroundings& around)
        : sheet(openSheet), surroundings(around) {}

    bool IsModified() const { return sheet.IsModified(surroundings.editor.GetText()); }

    void New();
    void Open();
    void OpenSamples();
    // A sheet that is not the user's own is saved as. False where that was cancelled; true in every
    // other case, also where nothing could be stored.
    bool Save();
    // False where the dialog was cancelled.
    bool SaveAs();
    // Whether the window may close.
    bool CloseRequest();
    // The sheet of the last session, as the settings name it. Where it can't be had the window
    // starts with no sheet, its title and its editor as they are.
    void Reopen(std::int32_t archiveKind, std::string sheetName);
    // The open sheet got another name.
    void SetSheetName(const std::string& name);

private:
    void OfferToSave();
    // Shows a sheet and takes it for saved as the editor gives it back.
    void Load(std::int32_t archiveKind, const ChosenSheet& chosen);

    CurrentSheet& sheet;
    SheetSurroundings surroundings;
};

}  // namespace orvane
