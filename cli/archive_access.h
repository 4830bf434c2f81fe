#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "storage/archive.h"
#include "storage/stored_text.h"

// Archives as the commands find them. Where something is not there, a message goes to the standard
// error and `status` becomes the exit status.

namespace orvane::cli {

// Reads the whole archive, not open for writing. False where there is none or it can't be read. A
// command that is writing the archive comes to its end first.
bool ReadArchive(const std::string& path, TextBuffer& archive, int& status);
// The same for one that has its turn at the file already.
bool ReadArchiveInTurn(const std::string& path, TextBuffer& archive, int& status);

// The stored bytes of the name of a sheet that is there.
std::optional<std::string> FindName(const TextBuffer& archive, const std::string& path,
                                    std::string_view given, ExchangeForm form, int& status);

// A sheet's text as it is stored.
std::optional<std::string> ReadStoredSheet(const std::string& path, std::string_view name,
                                           ExchangeForm form, int& status);

// Whether an archive may be as long as this.
bool FitsArchive(const std::string& path, std::size_t length, int& status);

// Writes the archive back in place; false where it can't be. A write that fails halfway is taken
// back as far as the disk lets it.
bool WriteArchive(const std::string& path, TextBuffer archive, int& status);

// Makes an archive that is not there yet; where it can't be written whole, there is none again.
bool MakeArchive(const std::string& path, TextBuffer archive, int& status);

}  // namespace orvane::cli
