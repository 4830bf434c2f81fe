#pragma once

#include <functional>
#include <optional>
#include <string>

// The dialogs that choose a sheet of an archive, as the commands of the main window see them. Each
// runs until it is accepted or cancelled. Only names and sheet texts pass through here.

namespace orvane {

struct ChosenSheet {
    std::string name;
    std::string text;

    bool operator==(const ChosenSheet&) const = default;
};

// Told the new name when the sheet that is open gets another one.
using SheetRenamed = std::function<void(const std::string& newName)>;

class SheetDialogs {
public:
    virtual ~SheetDialogs() = default;

    // Nothing where the dialog was cancelled. `currentName` is the sheet of this archive that is
    // open now, or empty.
    virtual std::optional<ChosenSheet> ShowOpen(const std::string& archivePath,
                                                const std::string& currentName,
                                                const SheetRenamed& renamed) = 0;
    // Stores `text`, which is not empty, under a name that the user chooses, and gives that name.
    // A sheet that is double-clicked gives its name too, and nothing is stored.
    virtual std::optional<std::string> ShowSave(const std::string& archivePath,
                                                const std::string& currentName,
                                                const std::string& text) = 0;
    virtual std::optional<ChosenSheet> ShowSamples(const std::string& archivePath) = 0;
};

}  // namespace orvane
