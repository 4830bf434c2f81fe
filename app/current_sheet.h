#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// What the main window knows of the open sheet.

namespace orvane {

// Values of `archiveKind`, as they are stored in the settings.
inline constexpr std::int32_t noArchive = -1;
inline constexpr std::int32_t userArchive = 0;
inline constexpr std::int32_t sampleArchive = 1;

struct CurrentSheet {
    std::int32_t archiveKind = noArchive;  // where the sheet is; `noArchive` is a new calculation
    std::string savedText;                 // as it was when it was loaded or last saved
    std::string sheetName;                 // empty for a new calculation
    std::string userFilePath;
    std::string sampleFilePath;

    // There is no flag: an edit that is reverted by hand leaves nothing to save.
    bool IsModified(std::string_view editorText) const { return editorText != savedText; }
    // What the dialogs on the user's sheets take for the open one: empty where it is none of them.
    std::string NameInUserArchive() const;
};

// Remembers where the two archives are, below the program's folder, and makes each of them ready.
void PrepareArchives(CurrentSheet& sheet, const std::string& programFolder);

// Titles of the main window: until a sheet is loaded, after New, and of an open sheet.
inline constexpr std::string_view programTitle = "Orvane";
inline constexpr std::string_view newSheetTitle = "Orvane: new calculation";
std::string TitleOfSheet(std::string_view sheetName);

}  // namespace orvane
