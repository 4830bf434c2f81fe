#include "storage/file_dialog_model.h"

#include <algorithm>
#include <utility>

#include "storage/archive_file.h"

namespace orvane {

namespace {

constexpr std::string_view nameIsUsed = "The file name has been used,please input another name.";

// Letters of Windows-1252: the ASCII ones, the accented ones in two rows with a sign of arithmetic
// in each, and four pairs that stand apart.
unsigned char ToSmallLetter(char letter) {
    const auto byte = static_cast<unsigned char>(letter);
    if (byte >= 'A' && byte <= 'Z') return static_cast<unsigned char>(byte + 0x20);
    if (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7)
        return static_cast<unsigned char>(byte + 0x20);
    if (byte == 0x8A || byte == 0x8C || byte == 0x8E)
        return static_cast<unsigned char>(byte + 0x10);
    return byte == 0x9F ? 0xFF : byte;
}

void Store(ArchiveFile& archive) {
    archive.WriteBack();
    archive.Close();
}

}  // namespace

bool IsSameNameInAnyCase(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, ToSmallLetter, ToSmallLetter);
}

void SheetListModel::Start() {
    rows.clear();
    selectedRow.reset();
    ArchiveFile archive;
    if (!archive.Load(archivePath)) return;
    rows = ListNames(archive.buffer);
    Store(archive);
}

DialogStep SheetListModel::OpenInto(std::string& name, std::string& text) {
    if (!selectedRow) {
        questions.ShowMessage("Select a file to open");
        return DialogStep::stay;
    }
    // Kept: accepted also where nothing could be read.
    ArchiveFile archive;
    if (archive.Load(archivePath)) {
        text = ReadSheetText(archive.buffer, SelectedName());
        name = SelectedName();
        Store(archive);
    }
    return DialogStep::accept;
}

FileDialogModel::FileDialogModel(std::string path, std::string openName, std::string text,
                                 SheetRenamed renamed, Questions& asked)
    : SheetListModel(std::move(path), asked),
      currentName(std::move(openName)),
      sheetText(std::move(text)),
      isSaveMode(!sheetText.empty()),
      sheetRenamed(std::move(renamed)) {}

DialogStep FileDialogModel::Select(std::optional<std::size_t> row) {
    selectedRow = row;
    if (row) nameText = rows[*row];
    return DialogStep::refresh;
}

DialogStep FileDialogModel::Open() { return OpenInto(currentName, sheetText); }

// Kept: it opens in save mode too, where nothing else does. The sheet in the editor is then taken
// to be the one that was clicked, although nothing was stored.
DialogStep FileDialogModel::DoubleClick() { return selectedRow ? Open() : DialogStep::stay; }

DialogStep FileDialogModel::Rename() {
    const std::string newName = TrimmedName();
    if (!MayRename(newName)) return DialogStep::stay;
    // Kept: `currentName` goes on holding the old name, so that the sheet under its new name can be
    // deleted while this dialog lives.
    const bool isOpenSheet = SelectedName() == currentName;
    if (isOpenSheet &&
        !questions.Confirm("The file is currently in open,do you want to rename it?")) {
        return DialogStep::stay;
    }
    ArchiveFile archive;
    if (!archive.Load(archivePath)) return DialogStep::stay;
    RenameSheet(archive.buffer, SelectedName(), newName);
    rows[*selectedRow] = newName;
    Select(selectedRow);
    if (isOpenSheet && sheetRenamed) sheetRenamed(newName);
    Store(archive);
    return DialogStep::refresh;
}

bool FileDialogModel::MayRename(const std::string& newName) {
    std::string_view objection;
    if (!selectedRow) {
        objection = "Please select a file to rename";
    } else if (newName == SelectedName()) {
        objection = "Please modify the file name to rename";
    } else if (newName.empty()) {
        objection = "Please input a new file name to rename";
    } else if (std::ranges::find(rows, newName) != rows.end()) {
        // Kept: capitals and small letters differ here and not in Save as, so that a sheet can be
        // renamed to "Abc" beside "abc".
        objection = nameIsUsed;
    }
    if (!objection.empty()) questions.ShowMessage(objection);
    return objection.empty();
}

DialogStep FileDialogModel::Delete() {
    if (!MayDelete()) return DialogStep::stay;
    ArchiveFile archive;
    if (!archive.Load(archivePath)) return DialogStep::stay;
    const std::size_t row = *selectedRow;
    DeleteSheet(archive.buffer, rows[row]);
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(row));
    selectedRow.reset();
    if (!rows.empty()) Select(std::min(row, rows.size() - 1));
    Store(archive);
    return DialogStep::refresh;
}

bool FileDialogModel::MayDelete() {
    if (rows.empty()) return false;
    if (!selectedRow) {
        questions.ShowMessage("Select a file to delete");
        return false;
    }
    if (SelectedName() == currentName) {
        questions.ShowMessage("the file: " + SelectedName() +
                              "\nis currently in open and can not be deleted.");
        return false;
    }
    return questions.Confirm("delete the file:\n" + SelectedName() + " ?");
}

DialogStep FileDialogModel::SaveAs() {
    const std::string name = TrimmedName();
    if (name.empty()) {
        questions.ShowMessage("Please input a new file name to save.");
        return DialogStep::stay;
    }
    const auto isUsed = [&](const std::string& row) { return IsSameNameInAnyCase(row, name); };
    if (std::ranges::any_of(rows, isUsed)) {
        questions.ShowMessage(nameIsUsed);
        return DialogStep::stay;
    }
    ArchiveFile archive;
    const bool isLoaded = archive.Load(archivePath);
    if (isLoaded) AppendSheet(archive.buffer, name, sheetText);
    // Kept: accepted also where nothing could be stored.
    currentName = name;
    if (isLoaded) Store(archive);
    return DialogStep::accept;
}

DialogStep FileDialogModel::MoveUp() {
    if (!MayMove() || *selectedRow == 0) return DialogStep::stay;
    return MoveTo(*selectedRow - 1, MoveSheetUp);
}

DialogStep FileDialogModel::MoveDown() {
    if (!MayMove() || *selectedRow + 1 == rows.size()) return DialogStep::stay;
    return MoveTo(*selectedRow + 1, MoveSheetDown);
}

bool FileDialogModel::MayMove() {
    if (!selectedRow) questions.ShowMessage("Select a file for moving");
    return selectedRow.has_value();
}

DialogStep FileDialogModel::MoveTo(std::size_t row,
                                   bool (*moveSheet)(TextBuffer&, std::string_view)) {
    ArchiveFile archive;
    if (!archive.Load(archivePath)) return DialogStep::stay;
    const bool isMoved = moveSheet(archive.buffer, SelectedName());
    if (isMoved) {
        std::swap(rows[*selectedRow], rows[row]);
        Select(row);
    }
    Store(archive);
    return isMoved ? DialogStep::refresh : DialogStep::stay;
}

std::string FileDialogModel::TrimmedName() const {
    const std::size_t from = nameText.find_first_not_of(' ');
    if (from == std::string::npos) return {};
    return nameText.substr(from, nameText.find_last_not_of(' ') + 1 - from);
}

DialogStep SamplesDialogModel::Select(std::optional<std::size_t> row) {
    selectedRow = row;
    return DialogStep::refresh;
}

DialogStep SamplesDialogModel::Open() { return OpenInto(chosenName, chosenText); }

}  // namespace orvane
