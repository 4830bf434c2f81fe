#include "storage/option_settings.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "core/calc_parameters.h"

namespace orvane {

namespace {

constexpr std::string_view coloursKey = "KEY_MAINCLRS";
constexpr std::string_view archiveKindKey = "KEY_FILETYPE";
constexpr std::string_view sheetNameKey = "KEY_SECTNAME";
constexpr std::string_view flagsKey = "KEY_MAINBOOLS";

constexpr std::int32_t defaultArchiveKind = -1;  // no sheet was open
constexpr std::uint32_t defaultFlags = 37;       // showSign, blackOutput, breakText

struct NumberOption {
    std::string_view key;
    std::int32_t CalcParameters::*field;
    std::int32_t defaultValue;
};
// In the order in which they are written.
constexpr NumberOption numberOptions[] = {
    {"KEY_SYSBITS", &CalcParameters::systemBitsIndex, 30},
    {"KEY_PRECISION", &CalcParameters::floatPrecision, 2},
    {"KEY_MUCALCH", &CalcParameters::calcHeightCommand, defaultCalcHeightCommand},
    {"KEY_LOCUSFINE", &CalcParameters::locusFine, 0},
};

// Bit 0 first; the bits above are written as 0.
constexpr bool CalcParameters::*flagOptions[] = {
    &CalcParameters::showSign,    &CalcParameters::positionLine, &CalcParameters::blackOutput,
    &CalcParameters::alwaysOnTop, &CalcParameters::formulaBreak, &CalcParameters::breakText,
};

// Whether a name can stand in the line of its key and comes back from it. No dialog makes another
// one, but an archive from elsewhere may hold it. A carriage return would end the line, and the
// rest of the name would be read as lines of its own; a NUL would hide every section behind it, so
// that each start appended them again; a line feed is the end of a line to all who edit the file by
// hand; and a line too long to be read would be joined by another one at each save.
bool FitsOnItsLine(std::string_view sheetName) {
    constexpr std::string_view lineBreakers("\r\n\0", 3);
    constexpr std::size_t brackets = 2;
    return sheetName.find_first_of(lineBreakers) == std::string_view::npos &&
           sheetName.size() <= longestSettingsLine - sheetNameKey.size() - brackets;
}

// The colours in the first slots, 0 in the others.
HexSlots SlotsOf(const TextColours& colours) {
    HexSlots slots{};
    std::copy(colours.begin(), colours.end(), slots.begin());
    return slots;
}

}  // namespace

void LoadColours(SettingsFile& settings, TextColours& colours) {
    if (!settings.IsOpen()) return;
    HexSlots slots;
    settings.GetHexBlock(mainSection, coloursKey, slots, SlotsOf(defaultTextColours));
    std::copy_n(slots.begin(), colours.size(), colours.begin());
}

void SaveColours(SettingsFile& settings, const TextColours& colours) {
    settings.SetHexBlock(mainSection, coloursKey, SlotsOf(colours));
}

void LoadOptions(SettingsFile& settings, CalcParameters& parameters, std::int32_t& archiveKind,
                 std::string& sheetName) {
    if (!settings.IsOpen()) return;
    for (const NumberOption& option : numberOptions) {
        parameters.*option.field = option.defaultValue;
        settings.GetInt(mainSection, option.key, parameters.*option.field);
    }
    std::uint32_t flags = defaultFlags;
    settings.GetUnsigned(mainSection, flagsKey, flags);
    for (bool CalcParameters::*const flag : flagOptions) {
        parameters.*flag = (flags & 1) != 0;
        flags >>= 1;
    }
    archiveKind = defaultArchiveKind;
    settings.GetInt(mainSection, archiveKindKey, archiveKind);
    settings.GetText(mainSection, sheetNameKey, sheetName);
}

void SaveOptions(SettingsFile& settings, const CalcParameters& parameters, std::int32_t archiveKind,
                 const std::string& sheetName) {
    for (const NumberOption& option : numberOptions) {
        settings.SetValue(mainSection, option.key, std::to_string(parameters.*option.field), true);
    }
    std::uint32_t flags = 0;
    for (std::size_t bit = 0; bit < std::size(flagOptions); ++bit) {
        if (parameters.*flagOptions[bit]) flags |= 1U << bit;
    }
    settings.SetValue(mainSection, flagsKey, std::to_string(flags), true);
    const bool isStored = FitsOnItsLine(sheetName);
    const std::int32_t storedKind = isStored ? archiveKind : defaultArchiveKind;
    settings.SetValue(mainSection, archiveKindKey, std::to_string(storedKind), true);
    settings.SetValue(mainSection, sheetNameKey, isStored ? sheetName : std::string(), true);
}

}  // namespace orvane
