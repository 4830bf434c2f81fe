#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzzed_bytes.h"
#include "storage/archive.h"
#include "storage/archive_index.h"
#include "storage/archive_parts.h"
#include "tests/storage/literal_archive.h"

// The bytes of an archive up to a mark, then operations on it: each one gives what a literal model
// gives, and an archive that is not damaged keeps all its other sheets.

namespace orvane::fuzz {

namespace {

using test::literal::Archive;
using Sheets = std::vector<ArchiveParts::Sheet>;

constexpr char endOfArchive = '\x01';
constexpr int mostOperations = 40;
constexpr std::size_t longestArchive = 8192;

// Whether the marks are those of whole sheets with names of their own, as the program writes it.
bool IsPlain(std::string_view text) {
    return text.find_first_of(std::string_view("\xB6\xE6\0", 3)) == std::string_view::npos;
}
bool IsSound(const ArchiveParts& parts) {
    if (!parts.rest.empty()) return false;
    for (std::size_t at = 0; at < parts.sheets.size(); ++at) {
        if (!IsPlain(parts.sheets[at].name) || !IsPlain(parts.sheets[at].text)) return false;
        for (std::size_t other = 0; other < at; ++other) {
            if (parts.sheets[other].name == parts.sheets[at].name) return false;
        }
    }
    return true;
}

Sheets Without(const ArchiveParts& parts, std::string_view name, std::string_view otherName) {
    Sheets others;
    for (const ArchiveParts::Sheet& sheet : parts.sheets) {
        if (sheet.name != name && sheet.name != otherName) others.push_back(sheet);
    }
    return others;
}

struct ArchivePair {
    FuzzedBytes& bytes;
    TextBuffer& archive;
    Archive& model;

    // Half of them names that are there.
    std::string Name() {
        const unsigned choice = bytes.Byte();
        const std::vector<std::string> names = model.Names();
        if (choice % 2 == 0 || names.empty()) return std::string(bytes.Text(8));
        return names[choice / 2 % names.size()];
    }
};

void Operate(ArchivePair& pair) {
    const unsigned operation = pair.bytes.Below(7);
    const std::string name = pair.Name();
    const std::string given(operation < 3 ? pair.bytes.Text(60) : std::string_view());
    const ArchiveParts before = CutArchive(pair.archive.View());
    switch (operation) {
        case 0:
            AppendSheet(pair.archive, name, given);
            pair.model.Append(name, given);
            break;
        case 1:
            ReplaceSheetText(pair.archive, name, given);
            pair.model.Replace(name, given);
            break;
        case 2:
            RenameSheet(pair.archive, name, given);
            pair.model.Rename(name, given);
            break;
        case 3:
            DeleteSheet(pair.archive, name);
            pair.model.Delete(name);
            break;
        case 4:
            Require(MoveSheetUp(pair.archive, name) == pair.model.MoveUp(name), "moved up");
            break;
        case 5:
            Require(MoveSheetDown(pair.archive, name) == pair.model.MoveDown(name), "moved down");
            break;
        default:
            Require(ReadSheetText(pair.archive, name) == pair.model.Read(name), "the same text");
            Require(FindSheet(pair.archive, name).value_or(-1) == pair.model.Find(name), "a place");
    }
    Require(pair.archive.View() == pair.model.bytes, "the same bytes");
    if (!IsSound(before) || !IsPlain(name) || !IsPlain(given)) return;
    const ArchiveParts after = CutArchive(pair.archive.View());
    const std::string_view newName = operation == 2 ? std::string_view(given) : name;
    if (operation != 4 && operation != 5) {
        Require(Without(after, name, newName) == Without(before, name, newName),
                "all other sheets stay");
    }
    Require(after.preamble == before.preamble, "the preamble stays");
}

void CheckWhole(const TextBuffer& archive, const Archive& model) {
    Require(ListNames(archive) == model.Names(), "the same names");
    const ArchiveParts parts = CutArchive(archive.View());
    Require(JoinArchive(parts) == archive.View(), "an archive cut and joined is the same");
    ArchiveParts merged = parts;
    MergeSheets(merged, parts.sheets);
    Require(merged.sheets.size() == parts.sheets.size(), "nothing new in what is there");
    if (IsSound(parts)) Require(!FindHidden(parts, parts.sheets), "no sheet is hidden");
}

// What a folder of sheets is read by.
void CheckIndex(std::string_view text) {
    std::string reason;
    const std::optional<ArchiveIndex> index = ReadIndex(text, reason);
    Require(index.has_value() == reason.empty(), "an index is read or there is a reason");
    if (index) Require(ReadIndex(IndexText(*index), reason).has_value(), "an index is read again");
}

}  // namespace

}  // namespace orvane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    using namespace orvane::fuzz;
    FuzzedBytes bytes(data, size);
    const std::string_view start = bytes.TextUpTo(endOfArchive).substr(0, longestArchive);
    CheckIndex(start);
    TextBuffer archive;
    archive.Assign(start);
    test::literal::Archive model{std::string(start)};
    ArchivePair pair{bytes, archive, model};
    CheckWhole(archive, model);
    for (int count = 0; count < mostOperations && !bytes.IsEmpty(); ++count) {
        Operate(pair);
        CheckWhole(archive, model);
    }
    return 0;
}
