#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "storage/questions.h"
#include "storage/sheet_dialogs.h"

// What the two dialogs with lists of sheets decide. Each action asks its questions, opens the
// archive, changes it, writes it back at once and closes it, so that cancelling a dialog undoes
// nothing. The rows are read once at the start and belong to the dialog from then on: an archive
// that another program changes meanwhile, or that can't be opened any more, leaves them as they
// are. File failures are never reported.

namespace orvane {

struct TextBuffer;

// Whether two names differ in nothing but capital and small letters of Windows-1252.
bool IsSameNameInAnyCase(std::string_view one, std::string_view other);

// What the window has to do after an action.
enum class DialogStep {
    stay,     // nothing has changed
    refresh,  // show rows, selection and name box anew
    accept,   // close; the result stands in the model
};

// The list that both dialogs have.
class SheetListModel {
public:
    const std::vector<std::string>& Rows() const { return rows; }
    std::optional<std::size_t> SelectedRow() const { return selectedRow; }

    // Fills the list with the names in file order, none of them selected. It stays empty where the
    // archive can't be loaded.
    void Start();

protected:
    SheetListModel(std::string path, Questions& asked)
        : archivePath(std::move(path)), questions(asked) {}
    ~SheetListModel() = default;

    const std::string& SelectedName() const { return rows[*selectedRow]; }
    // Replaces both by the sheet that is selected; leaves them alone where the archive can't be
    // loaded.
    DialogStep OpenInto(std::string& name, std::string& text);

    std::string archivePath;
    Questions& questions;
    std::vector<std::string> rows;
    std::optional<std::size_t> selectedRow;
};

// The File dialog: in save mode where it is given a text, in open mode otherwise.
class FileDialogModel : public SheetListModel {
public:
    FileDialogModel(std::string archivePath, std::string currentName, std::string sheetText,
                    SheetRenamed renamed, Questions& questions);

    // The fields of the dialog: the sheet that is open, then the one that was chosen, and its text.
    std::string currentName;
    std::string sheetText;
    // What stands in the name box. The window keeps it up to date.
    std::string nameText;

    bool IsSaveMode() const { return isSaveMode; }

    // A row, or none. A row's name goes to the name box.
    DialogStep Select(std::optional<std::size_t> row);
    DialogStep Open();
    DialogStep DoubleClick();
    DialogStep Rename();
    DialogStep Delete();
    DialogStep SaveAs();
    DialogStep MoveUp();
    DialogStep MoveDown();

private:
    std::string TrimmedName() const;
    bool MayRename(const std::string& newName);
    bool MayDelete();
    bool MayMove();
    // To the neighbour's row.
    DialogStep MoveTo(std::size_t row, bool (*moveSheet)(TextBuffer&, std::string_view));

    bool isSaveMode;
    SheetRenamed sheetRenamed;
};

// The Sample files dialog.
class SamplesDialogModel : public SheetListModel {
public:
    SamplesDialogModel(std::string archivePath, Questions& questions)
        : SheetListModel(std::move(archivePath), questions) {}

    std::string chosenName;
    std::string chosenText;

    DialogStep Select(std::optional<std::size_t> row);
    DialogStep Open();
    // Kept: unlike that of the File dialog it checks nothing first, so it gives the message where
    // no row is selected.
    DialogStep DoubleClick() { return Open(); }
};

}  // namespace orvane
