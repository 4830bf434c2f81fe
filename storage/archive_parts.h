#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "storage/archive.h"

// A whole archive as its sheets, for work that takes or gives all of them at once.

namespace orvane {

// An archive cut at its marks; joined again it gives the same bytes.
struct ArchiveParts {
    struct Sheet {
        std::string name;
        std::string text;

        bool operator==(const Sheet&) const = default;
    };
    std::string preamble;       // up to the first name mark
    std::vector<Sheet> sheets;  // in file order, as they are listed
    std::string rest;           // what no search finds: behind a NUL, or a name without its text

    bool operator==(const ArchiveParts&) const = default;
};
ArchiveParts CutArchive(std::string_view bytes);
std::string JoinArchive(const ArchiveParts& parts);

// Gives each sheet's text to the first sheet of its name, which is the one that searches find, or
// puts the sheet behind the last one and in front of the rest. All others stay.
struct MergeCount {
    std::size_t replaced = 0;
    std::size_t added = 0;
};
MergeCount MergeSheets(ArchiveParts& into, const std::vector<ArchiveParts::Sheet>& from);

}  // namespace orvane
