#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "storage/settings_file.h"
#include "storage/text_colours.h"

// Colours, options and window placements to and from their keys. Where the file is not open all of
// it does nothing, defaults included; where a key is missing the default holds.

namespace orvane {

struct CalcParameters;

inline constexpr std::string_view mainWindowPlacementKey = "KEY_WNDPLACE";
inline constexpr std::string_view nodeWindowPlacementKey = "KEY_DLGNODEPLACE";
inline constexpr std::string_view locusWindowPlacementKey = "KEY_DLGLOCUSPLACE";

// The command of the split height "4/8" in the main window's list of heights.
inline constexpr std::int32_t defaultCalcHeightCommand = 32810;

void LoadColours(SettingsFile& settings, TextColours& colours);
void SaveColours(SettingsFile& settings, const TextColours& colours);

// The options of a run and of the window, with the kind and the name of the open sheet. The name
// stays as it was where its key is missing. Nothing that is read is judged: a wrong number is taken
// as it is. A name that can't be read back from one line, as it holds a CR, an LF or a NUL or is
// longer than such a line, is saved as no sheet: the kind -1 and an empty name, so that the next
// start is an unnamed sheet.
void LoadOptions(SettingsFile& settings, CalcParameters& parameters, std::int32_t& archiveKind,
                 std::string& sheetName);
void SaveOptions(SettingsFile& settings, const CalcParameters& parameters, std::int32_t archiveKind,
                 const std::string& sheetName);

}  // namespace orvane
