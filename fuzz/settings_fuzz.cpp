#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "core/calc_parameters.h"
#include "fuzz/fuzzed_bytes.h"
#include "fuzz/memory_file.h"
#include "storage/option_settings.h"
#include "storage/settings_file.h"
#include "tests/storage/settings_model.h"

// The bytes of a settings file up to a mark, then operations on it: each one does to the file what
// it does to a model of it in memory.

namespace orvane::fuzz {

namespace {

using test::ModelRange;
using test::SettingsModel;

constexpr char endOfFile = '\x01';
constexpr int mostOperations = 40;

struct SettingsPair {
    FuzzedBytes& bytes;
    SettingsFile& file;
    SettingsModel& model;

    std::string Section() {
        constexpr std::string_view usual[] = {mainSection, globalSection, "X", ""};
        return Name(usual);
    }
    std::string Key() {
        constexpr std::string_view usual[] = {"A", "AB", "KEY_SYSBITS", ""};
        return Name(usual);
    }

private:
    std::string Name(const std::string_view (&usual)[4]) {
        const unsigned choice = bytes.Below(5);
        return std::string(choice < 4 ? usual[choice] : bytes.Text(8));
    }
};

void Find(SettingsPair& pair) {
    const std::string name = pair.Section();
    ByteRange range;
    const bool isFound = pair.file.FindSection(name, range);
    const std::optional<ModelRange> expected = pair.model.FindSection(name);
    Require(isFound == expected.has_value(), "a section is found where it is");
    if (isFound) Require(range.from == expected->from && range.to == expected->to, "its place");
}

void Read(SettingsPair& pair) {
    std::string line, expectedLine;
    ByteRange range;
    ModelRange expected;
    const bool isThere = pair.file.ReadLine(line, range);
    Require(isThere == pair.model.ReadLine(expectedLine, expected), "a line is there");
    if (!isThere) return;
    Require(line == expectedLine, "the line");
    Require(range.from == expected.from && range.to == expected.to, "the line's place");
}

void Get(SettingsPair& pair) {
    const std::string section = pair.Section(), key = pair.Key();
    std::string text;
    const bool isFound = pair.file.GetText(section, key, text);
    Require((isFound ? std::optional(text) : std::nullopt) == pair.model.Value(section, key),
            "the value of a key");
    std::int32_t number = 0;
    std::uint32_t unsignedNumber = 0;
    HexSlots slots{};
    WindowPlacement placement;
    Require(pair.file.GetInt(section, key, number) == isFound, "a number");
    Require(pair.file.GetUnsigned(section, key, unsignedNumber) == isFound, "an unsigned number");
    Require(pair.file.GetHexBlock(section, key, slots, {}) == isFound, "a block");
    Require(!pair.file.GetPlacement(section, key, placement) || isFound, "a placement");
    Require(isFound || placement == WindowPlacement{}, "no placement where there is no key");
}

void Set(SettingsPair& pair) {
    const std::string section = pair.Section(), key = pair.Key();
    const std::string text(pair.bytes.Text(40));
    const bool create = pair.bytes.Below(2) != 0;
    Require(pair.file.SetValue(section, key, text, create) ==
                pair.model.SetValue(section, key, text, create),
            "a value is set");
}

void Replace(SettingsPair& pair) {
    const std::size_t size = pair.model.bytes.size();
    const std::size_t first = pair.bytes.Byte() % (size + 1),
                      second = pair.bytes.Byte() % (size + 1);
    const std::string text(pair.bytes.Text(20));
    const auto [from, to] = std::minmax(first, second);
    pair.model.ReplaceRange(from, to, text);
    Require(pair.file.ReplaceRange(from, to, text), "a range is replaced");
}

void Prepare(SettingsPair& pair) {
    pair.model.OpenAndPrepare();
    Require(pair.file.OpenAndPrepare(), "the file opens");
}

void Reopen(SettingsPair& pair) {
    pair.model.Open();
    Require(pair.file.Open(), "the file opens");
}

// What a program does at its end and at its next start. Works on the file alone, so it comes last.
void SaveAndLoadOptions(SettingsPair& pair) {
    pair.file.OpenAndPrepare();
    CalcParameters saved;
    std::int32_t kind = -1;
    std::string name = "none";
    LoadOptions(pair.file, saved, kind, name);
    SaveOptions(pair.file, saved, kind, name);
    CalcParameters loaded;
    LoadOptions(pair.file, loaded, kind, name);
    TextColours colours;
    LoadColours(pair.file, colours);
    SaveColours(pair.file, colours);
}

}  // namespace

}  // namespace orvane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    using namespace orvane::fuzz;
    static const MemoryFile disk;
    FuzzedBytes bytes(data, size);
    test::SettingsModel model;
    model.bytes = bytes.TextUpTo(endOfFile);
    disk.Put(model.bytes);
    SettingsFile file(disk.Path());
    SettingsPair pair{bytes, file, model};
    Reopen(pair);
    constexpr void (*operations[])(SettingsPair&) = {Find,    Read,    Get,   Set,
                                                     Replace, Prepare, Reopen};
    for (int count = 0; count < mostOperations && !bytes.IsEmpty(); ++count) {
        operations[bytes.Below(std::size(operations))](pair);
        Require(disk.Bytes() == model.bytes, "every byte is where it shall be");
    }
    SaveAndLoadOptions(pair);
    return 0;
}
