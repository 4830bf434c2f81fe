#include "app/sheet_commands.h"

#include <optional>
#include <utility>

#include "locus/locus_store.h"
#include "storage/archive_file.h"

namespace orvane {

namespace {

constexpr std::string_view saveQuestion = "save the calculation?";

// The text of a sheet; nothing where the archive can't be loaded or has no such sheet.
std::optional<std::string> ReadSheet(const std::string& archivePath, const std::string& name) {
    ArchiveFile archive;
    if (!archive.Load(archivePath)) return std::nullopt;
    std::optional<std::string> text;
    if (FindSheet(archive.buffer, name)) text = ReadSheetText(archive.buffer, name);
    archive.Close();
    return text;
}

}  // namespace

void SheetCommands::New() {
    OfferToSave();
    locusStore.Clear();
    sheet.archiveKind = noArchive;
    sheet.sheetName.clear();
    sheet.savedText.clear();
    surroundings.editor.SetText({});
    surroundings.title.SetTitle(newSheetTitle);
}

void SheetCommands::Open() {
    OfferToSave();
    const std::optional<ChosenSheet> chosen =
        surroundings.dialogs.ShowOpen(sheet.userFilePath, sheet.NameInUserArchive(),
                                      [this](const std::string& name) { SetSheetName(name); });
    if (!chosen) return;
    Load(userArchive, *chosen);
    locusStore.Clear();
}

// Kept: the curves stay, unlike those of a sheet that is opened.
void SheetCommands::OpenSamples() {
    OfferToSave();
    const std::optional<ChosenSheet> chosen =
        surroundings.dialogs.ShowSamples(sheet.sampleFilePath);
    if (chosen) Load(sampleArchive, *chosen);
}

bool SheetCommands::Save() {
    if (sheet.archiveKind != userArchive) return SaveAs();
    const std::string text = surroundings.editor.GetText();
    ArchiveFile archive;
    // Kept: a sheet that is no longer in the archive counts as saved, and so does one whose archive
    // can't be loaded, which is asked for again the next time.
    if (!archive.Load(sheet.userFilePath)) return true;
    ReplaceSheetText(archive.buffer, sheet.sheetName, text);
    sheet.savedText = text;
    archive.WriteBack();
    archive.Close();
    return true;
}

bool SheetCommands::SaveAs() {
    const std::string text = surroundings.editor.GetText();
    // The dialog takes no text for the wish to open a sheet, so an empty one is stored as a blank.
    const std::optional<std::string> name = surroundings.dialogs.ShowSave(
        sheet.userFilePath, sheet.NameInUserArchive(), text.empty() ? " " : text);
    if (!name) return false;
    sheet.archiveKind = userArchive;
    sheet.sheetName = *name;
    sheet.savedText = text;
    surroundings.title.SetTitle(TitleOfSheet(*name));
    return true;
}

bool SheetCommands::CloseRequest() {
    if (!IsModified()) return true;
    switch (surroundings.questions.AskYesNoCancel(saveQuestion)) {
        case Answer::yes:
            return Save();
        case Answer::no:
            return true;
        case Answer::cancel:
            break;
    }
    return false;
}

void SheetCommands::Reopen(std::int32_t archiveKind, std::string sheetName) {
    sheet.archiveKind = noArchive;
    sheet.sheetName.clear();
    sheet.savedText.clear();
    if (archiveKind < 0 || sheetName.empty()) return;
    const bool isUsers = archiveKind == userArchive;
    std::optional<std::string> text =
        ReadSheet(isUsers ? sheet.userFilePath : sheet.sampleFilePath, sheetName);
    if (text) Load(isUsers ? userArchive : sampleArchive, {std::move(sheetName), std::move(*text)});
}

void SheetCommands::SetSheetName(const std::string& name) {
    sheet.sheetName = name;
    surroundings.title.SetTitle(TitleOfSheet(name));
}

// Kept: the command that asks goes on whatever becomes of the save, so one that is cancelled loses
// the text.
void SheetCommands::OfferToSave() {
    if (IsModified() && surroundings.questions.AskYesNo(saveQuestion)) Save();
}

void SheetCommands::Load(std::int32_t archiveKind, const ChosenSheet& chosen) {
    surroundings.editor.SetText(chosen.text);
    sheet.savedText = surroundings.editor.GetText();
    sheet.archiveKind = archiveKind;
    SetSheetName(chosen.name);
}

}  // namespace orvane
