#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "storage/archive_parts.h"
#include "storage/stored_text.h"

// Archives to folders of text files and back, so that sheets can be kept under version control and
// edited elsewhere. Each sheet becomes one file; `index.json` keeps order, true names and every
// byte of the archive that belongs to no sheet, so that a folder read into a new archive gives the
// bytes it was written from.

namespace orvane {

// Names of files for sheets: plain ASCII that every file system takes, not longer than 100 bytes,
// with ".txt" behind them, all different also where letter case does not count.
class SheetFileNames {
public:
    std::string NameFor(std::string_view sheetName);

private:
    std::set<std::string> taken;      // in small letters
    std::map<std::string, int> uses;  // how often a name was asked for, in small letters
};

// Writes the folder, making it where it is missing. False with the reason. Files that an index in
// the folder names are written over; all others that are there stay, and so do links.
bool ExportArchive(const ArchiveParts& parts, const std::string& folder, ExchangeForm form,
                   std::string& reason);

// Reads a folder. Nothing with the reason; `force` stores what StorageProblem and NameProblem would
// refuse. Sheets that were in an archive with such bytes are marked in the index and come back as
// they were without it.
std::optional<ArchiveParts> ImportFolder(const std::string& folder, ExchangeForm form, bool force,
                                         std::string& reason);

}  // namespace orvane
