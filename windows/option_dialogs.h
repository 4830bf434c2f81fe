#pragma once

#include <cstdint>
#include <optional>

#include "storage/text_colours.h"
#include "windows/help_viewer.h"

// The two dialogs that change settings. Each has a help button in its title bar; window managers
// that draw none have F1 for it.

class QWidget;

namespace orvane {

// "Text color options": what the user makes of the editor's colours, or nothing where they stay as
// they are.
std::optional<TextColours> ChooseTextColours(QWidget* owner, const TextColours& colours,
                                             const ShowTopic& showTopic = ShowHelpTopic);

// "Options": the fineness of drawn curves, CalcParameters::locusFine, or nothing where it stays.
std::optional<std::int32_t> ChooseLocusFine(QWidget* owner, std::int32_t locusFine,
                                            const ShowTopic& showTopic = ShowHelpTopic);

}  // namespace orvane
