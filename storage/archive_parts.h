#pragma once

#include <cstddef>
#include <optional>
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

// Gives each sheet's text to the first sheet of its name as they are listed, or puts the sheet
// behind the last one and in front of the rest. All others stay.
struct MergeCount {
    std::size_t replaced = 0;
    std::size_t added = 0;
};
MergeCount MergeSheets(ArchiveParts& into, const std::vector<ArchiveParts::Sheet>& from);

// In a damaged archive a name can hold name marks, and searches take what stands behind one of them
// for a name as well: where a sheet "a<b" stands in front of a sheet "b" ('<' is the name mark),
// nobody ever gets at "b". The first of the wanted sheets that can't be found for this reason, and
// the sheet that is found in its place. For names without text marks.
struct HiddenSheet {
    std::string name;
    std::string behind;
};
std::optional<HiddenSheet> FindHidden(const ArchiveParts& archive,
                                      const std::vector<ArchiveParts::Sheet>& wanted);

}  // namespace orvane
